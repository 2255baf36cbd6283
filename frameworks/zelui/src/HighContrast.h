#pragma once

namespace zelui {

/// Whether the user asked the system for colours of high contrast, as far as the system says so.
bool SystemWantsHighContrast();

}  // namespace zelui
