#pragma once

#include <cstddef>
#include <utility>

#include <pluginterfaces/base/funknown.h>

#include "PluginCall.h"

namespace zelaudiofilterhost {

/// Holds one reference to an object of a VST3 module. Main thread.
///
/// Interface ids are passed as the constants `I…_iid` that the SDK's headers define beside each interface; the members
/// `I…::iid` would need the SDK's sources compiled in.
template <typename T>
class Vst3Ptr {
public:
    Vst3Ptr() = default;
    /// Takes over a reference that the caller owns.
    static Vst3Ptr Adopt(T* object) {
        Vst3Ptr pointer;
        pointer.mObject = object;
        return pointer;
    }
    /// Takes a reference of its own to an object, which may be null. What the plug-in throws comes out.
    static Vst3Ptr Share(T* object) {
        if (object != nullptr) object->addRef();
        return Adopt(object);
    }
    /// Asks an object (may be null) for an interface; null when it has none.
    static Vst3Ptr Query(Steinberg::FUnknown* object, const Steinberg::TUID id) {
        void* found = nullptr;
        if (object == nullptr || object->queryInterface(id, &found) != Steinberg::kResultOk) return Vst3Ptr();
        return Adopt(static_cast<T*>(found));
    }
    Vst3Ptr(Vst3Ptr&& other) noexcept : mObject(std::exchange(other.mObject, nullptr)) {}
    Vst3Ptr& operator=(Vst3Ptr&& other) noexcept {
        std::swap(mObject, other.mObject);
        other.Reset();
        return *this;
    }
    ~Vst3Ptr() { Reset(); }

    void Reset() noexcept {
        T* const object = std::exchange(mObject, nullptr);
        if (object != nullptr) CallPluginQuietly([object] { object->release(); });
    }

    T* Get() const { return mObject; }
    T* operator->() const { return mObject; }
    explicit operator bool() const { return mObject != nullptr; }

private:
    T* mObject = nullptr;
};

}  // namespace zelaudiofilterhost
