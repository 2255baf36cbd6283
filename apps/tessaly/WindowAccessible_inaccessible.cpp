#include "WindowAccessible.h"

namespace tessaly {

void SetWindowKind(QWidget&, WindowKind) {}

}  // namespace tessaly
