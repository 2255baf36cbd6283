#pragma once

#include <pluginterfaces/gui/iplugview.h>

#include "EditorSizeRequests.h"
#include "Vst3Object.h"
#include "Vst3RunLoop.h"

namespace zelaudiofilterhost {

class Vst3Editor;

/// What a view asks for a size and a run loop while it is open. Plug-ins keep it longer than they should and call it
/// from whatever thread they are on: it outlives its editor, and a size that is asked for on another thread is handed
/// to the main thread.
class Vst3PlugFrame final : public Vst3Object<Vst3PlugFrame, Steinberg::IPlugFrame> {
public:
    static const Steinberg::TUID& InterfaceId() { return Steinberg::IPlugFrame_iid; }

    explicit Vst3PlugFrame(Vst3Editor& editor);

    /// Sizes asked for on other threads. The editor begins.
    EditorSizeRequests& GetSizeRequests() { return mSizeRequests; }
    /// From here on nothing reaches the editor. Main thread.
    void Leave();
    /// Lets go of what is left in the run loop. Main thread.
    void StopRunLoop() { mRunLoop.Stop(); }

    Steinberg::tresult PLUGIN_API resizeView(Steinberg::IPlugView* view, Steinberg::ViewRect* size) override;
    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID id, void** object) override;

private:
    Vst3Editor* mEditor;  ///< main thread
    EditorSizeRequests mSizeRequests;
    Vst3RunLoop mRunLoop;
};

}  // namespace zelaudiofilterhost
