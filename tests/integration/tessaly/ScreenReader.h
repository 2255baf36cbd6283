#pragma once

#include <QWidget>
#include <string>
#include <vector>

namespace zeltests {

/// A window as somebody finds it who hears instead of seeing it, and has no mouse.
class ScreenReader {
public:
    /// Walks the tree of all that is shown. The window, what can be focused, chosen or pressed and what shows progress
    /// have names, and the roles that people know them by. One line for each thing that has not: its place, role and
    /// name.
    static std::vector<std::string> FindFaults(QWidget& window);
    /// How many things in it can be focused, chosen or pressed.
    static std::size_t CountUsable(QWidget& window);

    /// Presses the Tab key until the focus is where it was; the controls that Tab should reach and has not.
    static std::vector<std::string> FindUnreachable(QWidget& window);
};

}  // namespace zeltests
