#include "SoundFormats.h"

namespace zeltests {

bool HasFormat(int) { return true; }

}  // namespace zeltests
