#include "SliderAccessibility.h"

namespace zelui {

void InstallSliderAccessible() {}

}  // namespace zelui
