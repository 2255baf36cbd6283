#include "Vst3PlugFrame.h"

#include <cstdint>

#include <zelcore/Threads.h>

#include "Vst3Editor.h"

namespace zelaudiofilterhost {

Vst3PlugFrame::Vst3PlugFrame(Vst3Editor& editor) : mEditor(&editor) {}

void Vst3PlugFrame::Leave() {
    mEditor = nullptr;
    mSizeRequests.End();
}

Steinberg::tresult PLUGIN_API Vst3PlugFrame::resizeView(Steinberg::IPlugView*, Steinberg::ViewRect* size) {
    if (size == nullptr) return Steinberg::kInvalidArgument;
    const Steinberg::ViewRect copy = *size;
    if (zelcore::threads::IsMainThread()) {
        return mEditor != nullptr && mEditor->Resize(copy) ? Steinberg::kResultTrue : Steinberg::kResultFalse;
    }
    // In a type that the difference of any two edges fits into.
    const std::int64_t width = std::int64_t(copy.right) - copy.left;
    const std::int64_t height = std::int64_t(copy.bottom) - copy.top;
    return mSizeRequests.Request(width, height) ? Steinberg::kResultTrue : Steinberg::kResultFalse;
}

Steinberg::tresult PLUGIN_API Vst3PlugFrame::queryInterface(const Steinberg::TUID id, void** object) {
    if (object != nullptr && mRunLoop.Query(id, object)) return Steinberg::kResultOk;
    return Vst3Object::queryInterface(id, object);
}

}  // namespace zelaudiofilterhost
