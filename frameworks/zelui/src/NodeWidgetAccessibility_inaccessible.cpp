#include "NodeWidgetAccessibility.h"

namespace zelui {

void InstallNodeWidgetAccessible() {}

}  // namespace zelui
