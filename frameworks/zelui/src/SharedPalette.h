#pragma once

class QStyleOption;
class QWidget;

namespace zelui {

/// Has a widget without colours of its own be drawn with the program's palette instead of its copy of it. Styles keep
/// pictures of what they draw by the identity of the palette, which each copy has for itself: with the copies, every
/// new control would leave a set of pictures behind that no other one uses.
void UseSharedPalette(QStyleOption& option, const QWidget& widget);

}  // namespace zelui
