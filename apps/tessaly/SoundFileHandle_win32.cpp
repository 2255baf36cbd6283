#include "SoundFileHandle.h"

#include <windows.h>

#include <sndfile.h>

namespace tessaly {

SoundFileHandle OpenSoundFile(const std::filesystem::path& path, int mode, SF_INFO& info) {
    return SoundFileHandle(sf_wchar_open(path.c_str(), mode, &info));
}

}  // namespace tessaly
