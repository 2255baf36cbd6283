#pragma once

#include <cstdint>

#include "Vst2Abi.h"

namespace zelaudiofilterhost {

/// What the host's callback asks about one live effect; whoever runs the effect implements it and joins the two by a
/// Vst2HostConnection.
///
/// Called from any thread, the sound thread among them, and from within any call into the plug-in: answers at once,
/// takes no locks, and posts to the main loop what takes longer or could end the effect.
class Vst2HostClient {
public:
    virtual double GetSampleRate() const noexcept = 0;
    /// Most frames in a block.
    virtual int GetBlockSize() const noexcept = 0;
    /// What the calling thread is busy with.
    virtual vst2::ProcessLevel GetProcessLevel() const noexcept = 0;
    /// The effect asks for a window of that size for its editor; true when it will get it. Any numbers may come.
    virtual bool RequestEditorSize(std::intptr_t width, std::intptr_t height) noexcept = 0;

protected:
    Vst2HostClient() = default;
    ~Vst2HostClient() = default;
};

}  // namespace zelaudiofilterhost
