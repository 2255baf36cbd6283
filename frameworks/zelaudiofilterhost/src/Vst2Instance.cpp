#include "Vst2Instance.h"

#include <array>

#include "PluginCall.h"
#include "PluginText.h"
#include "Vst2Host.h"
#include "Vst2Module.h"

namespace zelaudiofilterhost {

namespace {

constexpr std::size_t kTextBufferSize = 4096;

}  // namespace

void Vst2Instance::Closer::operator()(vst2::Effect* effect) const noexcept {
    CallPluginQuietly([effect] { effect->dispatcher(effect, vst2::kClose, 0, 0, nullptr, 0.0f); });
}

Vst2Instance::Vst2Instance(const Vst2Module& module, std::int32_t componentId)
    : mEffect(&module.MakeEffect(componentId)) {
    // Shells ask once more which component is meant when they are opened.
    const Vst2Host::WantedComponent wanted(componentId);
    CallPlugin("when it was opened",
               [this] { return mEffect->dispatcher(mEffect.get(), vst2::kOpen, 0, 0, nullptr, 0.0f); });
}

std::intptr_t Vst2Instance::Dispatch(vst2::EffectOperation operation, std::int32_t index, std::intptr_t value,
                                     void* pointer, float number) const {
    return CallPlugin("when it was asked about itself",
                      [&] { return mEffect->dispatcher(mEffect.get(), operation, index, value, pointer, number); });
}

zelcore::ustring Vst2Instance::GetText(vst2::EffectOperation operation, std::intptr_t* answer) const {
    return GetTextOf(operation, 0, answer);
}

zelcore::ustring Vst2Instance::GetTextOf(vst2::EffectOperation operation, std::int32_t index,
                                         std::intptr_t* answer) const {
    std::array<char, kTextBufferSize> buffer = {};
    const std::intptr_t result = Dispatch(operation, index, 0, buffer.data());
    if (answer != nullptr) *answer = result;
    return CleanPluginText(buffer.data(), buffer.size());
}

}  // namespace zelaudiofilterhost
