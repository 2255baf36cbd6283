#pragma once

#include <QString>
#include <QWidget>

namespace zeltests {

/// The name that a screen reader reads out for the widget. Where Qt was built without screen readers: the one that was
/// set, or the text that the widget shows.
QString GetSpokenName(QWidget& widget);
/// What it says besides the name.
QString GetSpokenDescription(QWidget& widget);

}  // namespace zeltests
