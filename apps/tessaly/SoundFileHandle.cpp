#include "SoundFileHandle.h"

#include <sndfile.h>

namespace tessaly {

void SoundFileCloser::operator()(sf_private_tag* file) const { sf_close(file); }

}  // namespace tessaly
