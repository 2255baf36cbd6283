#include "Vst3State.h"

#include <bit>
#include <utility>

#include "BlockGate.h"
#include "PluginCall.h"
#include "StateBytes.h"
#include "Vst3Instance.h"
#include "Vst3MemoryStream.h"
#include "Vst3Parameters.h"
#include "Vst3Ptr.h"

namespace zelaudiofilterhost {

using Steinberg::kResultOk;

namespace {

typedef Vst3Parameters::Values Values;

enum Vst3Part { kComponent, kController, kValues, kParts };

constexpr std::size_t kValueSize = sizeof(std::uint32_t) + sizeof(std::uint64_t);

Vst3Ptr<Vst3MemoryStream> MakeStream(StateEnvelope::Bytes bytes) {
    return Vst3Ptr<Vst3MemoryStream>::Adopt(new Vst3MemoryStream(std::move(bytes)));
}

/// What the half writes; empty for one that keeps no state. Throws when it has more than there is room for: what it
/// wrote until then is no use.
template <typename Half>
StateEnvelope::Bytes ReadHalf(Half& half) {
    const auto stream = MakeStream(StateEnvelope::Bytes());
    const auto result = CallPlugin("when its state was asked", [&] { return half.getState(stream.Get()); });
    if (stream->HasRefused()) throw PluginLoadError("has too large a state");
    return result == kResultOk ? stream->GetBytes() : StateEnvelope::Bytes();
}

StateEnvelope::Bytes PackValues(const Values& values) {
    StateWriter writer;
    for (const auto& [id, value] : values) {
        writer.Put(static_cast<std::uint32_t>(id));
        writer.Put(std::bit_cast<std::uint64_t>(value));
    }
    return writer.TakeBytes();
}

std::optional<Values> UnpackValues(const StateEnvelope::Bytes& bytes) {
    if (bytes.size() % kValueSize != 0 || bytes.size() / kValueSize > Vst3ParameterMailbox::kMaxParameters) return {};
    Values values;
    StateReader reader(bytes);
    std::uint32_t id = 0;
    std::uint64_t bits = 0;
    while (reader.Take(id) && reader.Take(bits)) {
        const auto value = std::bit_cast<double>(bits);
        if (!(value >= 0.0 && value <= 1.0)) return {};
        values.emplace_back(id, value);
    }
    return values;
}

// Before the component is asked: what a block takes to it from now on is in its state, too, and that twice is harmless.
// Between blocks: a value that one has taken and not told the component yet is in neither.
Values ReadWaiting(const Vst3Parameters& parameters, BlockGate& gate) {
    const BlockGate::Closed closed(gate);
    return parameters.GetWaiting();
}

bool WriteComponent(const StateEnvelope::Bytes& bytes, const Vst3Instance& instance) {
    const auto stream = MakeStream(bytes);
    return CallPlugin("when it was given its state",
                      [&] { return instance.GetComponent().setState(stream.Get()) == kResultOk; });
}

// What the controller answers says nothing: many have nothing to take and say so in one way or another.
void WriteController(const StateEnvelope& state, const Vst3Instance& instance) {
    if (instance.GetController() == nullptr) return;
    CallPlugin("when it was given its state", [&] {
        const StateEnvelope::Bytes& component = state.parts[kComponent];
        const StateEnvelope::Bytes& own = state.parts[kController];
        if (!component.empty()) instance.GetController()->setComponentState(MakeStream(component).Get());
        if (!own.empty()) instance.GetController()->setState(MakeStream(own).Get());
    });
}

}  // namespace

std::optional<StateEnvelope> Vst3State::Read(const Vst3Instance& instance, const Vst3Parameters& parameters,
                                             BlockGate& gate) {
    try {
        const Values waiting = ReadWaiting(parameters, gate);
        StateEnvelope::Bytes component = ReadHalf(instance.GetComponent());
        StateEnvelope::Bytes controller =
            instance.GetController() != nullptr ? ReadHalf(*instance.GetController()) : StateEnvelope::Bytes();
        const Values values = component.empty() ? parameters.GetAll() : waiting;
        return StateEnvelope{StateEnvelope::kVst3Parts,
                             {std::move(component), std::move(controller), PackValues(values)}};
    } catch (...) {
        return {};
    }
}

bool Vst3State::IsFit(const StateEnvelope& state) {
    return state.content == StateEnvelope::kVst3Parts && state.parts.size() == kParts &&
           UnpackValues(state.parts[kValues]);
}

bool Vst3State::Write(const StateEnvelope& state, const Vst3Instance& instance, Vst3Parameters& parameters) {
    try {
        if (!state.parts[kComponent].empty() && !WriteComponent(state.parts[kComponent], instance)) return false;
        WriteController(state, instance);
        parameters.Renew();
        parameters.SetAll(*UnpackValues(state.parts[kValues]));
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace zelaudiofilterhost
