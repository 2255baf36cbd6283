#include "Vst2State.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include <zelaudiofilterhost/PluginComponentInfo.h>

#include "PluginCall.h"
#include "StateBytes.h"
#include "Vst2Instance.h"

namespace zelaudiofilterhost {

namespace {

enum Vst2Part { kProgram, kContent, kParts };

bool HasChunk(const Vst2Instance& instance) { return (instance.GetEffect().flags & vst2::kProgramChunks) != 0; }

int CountParameters(const Vst2Instance& instance) {
    return std::clamp(instance.GetEffect().parameterCount, 0, PluginComponentInfo::kMaxParameters);
}

StateEnvelope::Bytes ReadProgram(const Vst2Instance& instance) {
    StateWriter writer;
    writer.Put(static_cast<std::uint32_t>(instance.Dispatch(vst2::kGetProgram)));
    return writer.TakeBytes();
}

/// Whether the effect failed tells `fails`; an effect may have nothing to keep.
StateEnvelope::Bytes ReadChunk(const Vst2Instance& instance, bool& fails) {
    void* chunk = nullptr;
    const std::intptr_t length = instance.Dispatch(vst2::kGetChunk, 0, 0, &chunk);
    fails = length < 0 || static_cast<std::uintptr_t>(length) > AudioFilter::kMaxStateSize ||
            (length > 0 && chunk == nullptr);
    if (fails || length == 0) return StateEnvelope::Bytes();
    // At once: the effect keeps it until it is asked for anything else.
    const auto* const bytes = static_cast<const std::uint8_t*>(chunk);
    return StateEnvelope::Bytes(bytes, bytes + length);
}

StateEnvelope::Bytes ReadValues(Vst2Instance& instance) {
    StateWriter writer;
    const int count = CountParameters(instance);
    vst2::Effect& effect = instance.GetEffect();
    for (int i = 0; i < count && effect.getParameter != nullptr; ++i) {
        const float value =
            CallPlugin("when its parameters were asked", [&] { return effect.getParameter(&effect, i); });
        const float sensible = std::isfinite(value) ? std::clamp(value, 0.0f, 1.0f) : 0.0f;
        writer.Put(std::bit_cast<std::uint32_t>(sensible));
    }
    return writer.TakeBytes();
}

bool AreValues(const StateEnvelope::Bytes& bytes) {
    StateReader reader(bytes);
    std::uint32_t bits = 0;
    while (reader.Take(bits)) {
        const auto value = std::bit_cast<float>(bits);
        if (!(value >= 0.0f && value <= 1.0f)) return false;
    }
    return reader.GetRest() == 0;
}

void WriteProgram(const StateEnvelope::Bytes& bytes, const Vst2Instance& instance) {
    std::uint32_t program = 0;
    StateReader(bytes).Take(program);
    const std::int32_t count = instance.GetEffect().programCount;
    if (count <= 0 || program >= static_cast<std::uint32_t>(count)) return;
    if (instance.Dispatch(vst2::kGetProgram) == static_cast<std::intptr_t>(program)) return;
    instance.Dispatch(vst2::kBeginSetProgram);
    instance.Dispatch(vst2::kSetProgram, 0, static_cast<std::intptr_t>(program));
    instance.Dispatch(vst2::kEndSetProgram);
}

void WriteChunk(StateEnvelope::Bytes bytes, const Vst2Instance& instance) {
    // What comes back says nothing: many effects that have taken it answer 0.
    instance.Dispatch(vst2::kSetChunk, 0, static_cast<std::intptr_t>(bytes.size()), bytes.data());
}

void WriteValues(const StateEnvelope::Bytes& bytes, Vst2Instance& instance) {
    vst2::Effect& effect = instance.GetEffect();
    StateReader reader(bytes);
    std::uint32_t bits = 0;
    for (int i = 0; i < CountParameters(instance) && effect.setParameter != nullptr && reader.Take(bits); ++i) {
        const auto value = std::bit_cast<float>(bits);
        CallPlugin("when its parameters were set", [&] { effect.setParameter(&effect, i, value); });
    }
}

}  // namespace

std::optional<StateEnvelope> Vst2State::Read(Vst2Instance& instance) {
    try {
        const StateEnvelope::Bytes program = ReadProgram(instance);
        bool fails = false;
        StateEnvelope::Bytes chunk = HasChunk(instance) ? ReadChunk(instance, fails) : StateEnvelope::Bytes();
        if (fails) return {};
        if (!chunk.empty()) return StateEnvelope{StateEnvelope::kVst2Chunk, {program, std::move(chunk)}};
        return StateEnvelope{StateEnvelope::kVst2Values, {program, ReadValues(instance)}};
    } catch (...) {
        return {};
    }
}

bool Vst2State::IsFit(const StateEnvelope& state, const Vst2Instance& instance) {
    if (state.parts.size() != kParts || state.parts[kProgram].size() != sizeof(std::uint32_t)) return false;
    const StateEnvelope::Bytes& content = state.parts[kContent];
    if (state.content == StateEnvelope::kVst2Chunk) return !content.empty() && HasChunk(instance);
    return state.content == StateEnvelope::kVst2Values && AreValues(content);
}

bool Vst2State::Write(const StateEnvelope& state, Vst2Instance& instance) {
    try {
        WriteProgram(state.parts[kProgram], instance);
        if (state.content == StateEnvelope::kVst2Chunk)
            WriteChunk(state.parts[kContent], instance);
        else
            WriteValues(state.parts[kContent], instance);
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace zelaudiofilterhost
