#pragma once

class QColor;
class QStyleOption;
class QWidget;

namespace zelui {

/// What the style lines with an edge, as it makes another colour of each.
enum class EdgeOf { kCheckBox, kField, kFrame };

/// Has the edge that is drawn with `option` be of that colour, where the style would make one that dark windows
/// swallow. Styles that have edges of their own keep them.
void UseEdgeColor(QStyleOption& option, const QWidget& widget, EdgeOf what, const QColor& color);

/// The colour of lines round groups of controls, with which those round lists and fields go together.
QColor GetFrameEdgeColor();

}  // namespace zelui
