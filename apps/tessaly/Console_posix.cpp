#include "Console.h"

namespace tessaly {

Console::Console() = default;

Console::~Console() = default;

std::vector<std::string> Console::GetArguments(int argc, const char* const* argv) {
    return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

// Programs of the desktop get none here.
void Console::CloseOwn() {}

}  // namespace tessaly
