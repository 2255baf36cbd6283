#include <windows.h>

#include "TerminalText.h"

namespace tessaly {

bool TerminalText::IsErrorStreamTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

}  // namespace tessaly
