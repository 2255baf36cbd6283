#include "PlatformChoice.h"

namespace zelui {

QByteArray ChoosePlatform() { return QByteArray(); }

bool WatchesDescriptors() { return false; }

}  // namespace zelui
