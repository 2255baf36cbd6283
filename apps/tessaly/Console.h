#pragma once

#include <string>
#include <vector>

namespace tessaly {

/// Where the program was started from. While one lives, UTF-8 that is written to a console appears as such, whatever
/// that console is set to.
class Console {
public:
    Console();
    // Nothing on some platforms.  NOLINTNEXTLINE(performance-trivially-destructible)
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// What the program was given, behind its own name, as UTF-8.
    static std::vector<std::string> GetArguments(int argc, const char* const* argv);
    /// Closes a console that is there for this program alone: who starts it from the desktop wants its window only.
    static void CloseOwn();

private:
    [[maybe_unused]] unsigned mOldEncoding = 0;
};

}  // namespace tessaly
