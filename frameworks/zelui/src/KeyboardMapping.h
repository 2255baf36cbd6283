#pragma once

#include <QKeyEvent>

#include <zelui/KeyboardEvent.h>

namespace zelui {

/// A key of Qt's as nodes get it.
ui::KeyboardEvent ToKeyboardEvent(const QKeyEvent& event);

}  // namespace zelui
