#include "AudioFileError.h"

#include "TerminalText.h"

namespace tessaly {

AudioFileError::AudioFileError(const std::string& path, const std::string& what)
    : std::runtime_error("'" + TerminalText::MakePrintable(path) + "' " + TerminalText::MakePrintable(what)) {}

}  // namespace tessaly
