#include "PlatformChoice.h"

namespace zelui {

QByteArray ChoosePlatform() { return QByteArray(); }

}  // namespace zelui
