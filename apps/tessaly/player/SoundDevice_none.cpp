#include "SoundDevice.h"

namespace tessaly {

class SoundDevice::Impl {};

SoundDevice::SoundDevice() = default;

SoundDevice::~SoundDevice() = default;

SoundDevice::Result SoundDevice::Start(SoundEngine&, int) { return kNoDevice; }

void SoundDevice::Stop() {}

int SoundDevice::GetBufferedFrames() const { return 0; }

bool SoundDevice::HasFailed() { return false; }

}  // namespace tessaly
