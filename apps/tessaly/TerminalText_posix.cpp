#include <unistd.h>

#include "TerminalText.h"

namespace tessaly {

bool TerminalText::IsErrorStreamTerminal() { return isatty(STDERR_FILENO) != 0; }

}  // namespace tessaly
