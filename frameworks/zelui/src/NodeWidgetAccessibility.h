#pragma once

namespace zelui {

/// Has screen readers know the widget that a tree of nodes is in as something that things are in. Qt gives it the focus
/// where the Tab key comes in, and it passes that on at once; a place to stop at it is not. Nothing where Qt has no
/// screen readers. Again is harmless; needed again after the application object was another one.
void InstallNodeWidgetAccessible();

}  // namespace zelui
