#pragma once

#include <cstddef>
#include <string>

#include <zelcore/ustring.h>

namespace tessaly {

/// Text on its way to a terminal. What plug-ins call themselves is not to be trusted with one.
class TerminalText {
public:
    static std::string FromText(const zelcore::ustring& text);
    /// Control characters, and bytes that are no UTF-8, become question marks.
    static std::string MakePrintable(const std::string& text);
    /// The same with small letters, for comparing what people type; of the letters A to Z alone.
    static std::string FoldCase(std::string text);
    /// Columns that UTF-8 text takes, counting each character as one.
    static std::size_t GetWidth(const std::string& text);
    /// Whether a person's terminal is behind the error stream.
    static bool IsErrorStreamTerminal();
};

}  // namespace tessaly
