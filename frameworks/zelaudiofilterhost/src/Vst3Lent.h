#pragma once

#include <cstring>

#include <pluginterfaces/base/funknown.h>

namespace zelaudiofilterhost {

/// The counting part of an object that the host lends to a VST3 plug-in for the time of one call. References do not
/// prolong its life. `Self` is the final class and names its interface's id by a static function `InterfaceId()`.
template <typename Self, typename Interface>
class Vst3Lent : public Interface {
public:
    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID id, void** object) override {
        if (object == nullptr) return Steinberg::kInvalidArgument;
        const bool known = std::memcmp(id, Steinberg::FUnknown_iid, sizeof(Steinberg::TUID)) == 0 ||
                           std::memcmp(id, Self::InterfaceId(), sizeof(Steinberg::TUID)) == 0;
        *object = known ? static_cast<Interface*>(this) : nullptr;
        return known ? Steinberg::kResultOk : Steinberg::kNoInterface;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }

protected:
    Vst3Lent() = default;
    ~Vst3Lent() = default;
    Vst3Lent(const Vst3Lent&) = default;
    Vst3Lent& operator=(const Vst3Lent&) = default;
};

}  // namespace zelaudiofilterhost
