#include <sndfile.h>

#include "SoundFormats.h"

namespace zeltests {

// It comes without the libraries for these.
bool HasFormat(int format) {
    const int type = format & SF_FORMAT_TYPEMASK;
    return type != SF_FORMAT_FLAC && type != SF_FORMAT_OGG && type != SF_FORMAT_MPEG;
}

}  // namespace zeltests
