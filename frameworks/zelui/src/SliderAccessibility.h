#pragma once

namespace zelui {

/// Has screen readers know sliders by their values in the program's own units; changing one from there is a gesture.
/// Nothing where Qt has no screen readers. Again is harmless; needed again after the application object was another
/// one.
void InstallSliderAccessible();

}  // namespace zelui
