#pragma once

#include <functional>
#include <memory>

#include <pluginterfaces/gui/iplugview.h>

namespace zeltestplugins {

class EditorWindow;

/// What keeps a VST3 editor going while it is open: a timer, a message that it sends itself with each tick, and the
/// events of its window. Where the host has a run loop, that runs them; elsewhere the system does.
class EditorPulse {
public:
    /// `onTick` and `onRead` are called from the main loop, the latter once for each of the former. A host that has a
    /// run loop calls them until it lets go of what it was given, and holds `owner` (may be null) meanwhile; elsewhere
    /// they are called until this goes.
    EditorPulse(Steinberg::IPlugFrame& frame, EditorWindow& window, Steinberg::FUnknown* owner,
                std::function<void()> onTick, std::function<void()> onRead);
    ~EditorPulse();
    EditorPulse(const EditorPulse&) = delete;
    EditorPulse& operator=(const EditorPulse&) = delete;

    /// Takes everything back that the frame was asked for; without this, it stays.
    void Stop();

private:
    class Platform;

    std::unique_ptr<Platform> mPlatform;
};

}  // namespace zeltestplugins
