#pragma once

#include <atomic>
#include <cstring>

#include <pluginterfaces/base/funknown.h>

namespace zelaudiofilterhost {

/// The counting part of an object that the host hands to VST3 plug-ins, which may release it from any thread. `Self` is
/// the final class and names its interface's id by a static function `InterfaceId()`.
template <typename Self, typename Interface>
class Vst3Object : public Interface {
public:
    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID id, void** object) override {
        if (object == nullptr) return Steinberg::kInvalidArgument;
        *object = nullptr;
        if (std::memcmp(id, Steinberg::FUnknown_iid, sizeof(Steinberg::TUID)) != 0 &&
            std::memcmp(id, Self::InterfaceId(), sizeof(Steinberg::TUID)) != 0) {
            return Steinberg::kNoInterface;
        }
        addRef();
        *object = static_cast<Interface*>(this);
        return Steinberg::kResultOk;
    }
    Steinberg::uint32 PLUGIN_API addRef() override { return ++mReferences; }
    Steinberg::uint32 PLUGIN_API release() override {
        const Steinberg::uint32 left = --mReferences;
        if (left == 0) delete static_cast<Self*>(this);
        return left;
    }

protected:
    Vst3Object() = default;
    ~Vst3Object() = default;
    Vst3Object(const Vst3Object&) = delete;
    Vst3Object& operator=(const Vst3Object&) = delete;

private:
    std::atomic<Steinberg::uint32> mReferences{1};
};

}  // namespace zelaudiofilterhost
