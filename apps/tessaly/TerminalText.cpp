#include "TerminalText.h"

#include <algorithm>

#include <zelcore/Utf.h>

namespace tessaly {

namespace {

/// What stands for bytes that are no text.
constexpr unsigned kReplacement = 0xFFFD;

/// Those of 8 bits, too: terminals take U+009B for the beginning of a command.
bool IsControl(unsigned unit) { return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F); }

}  // namespace

std::string TerminalText::FromText(const zelcore::ustring& text) {
    const zelcore::utf8string bytes = zelcore::utility::UTF16to8(text);
    return std::string(bytes.data(), bytes.size());
}

std::string TerminalText::MakePrintable(const std::string& text) {
    zelcore::ustring units = zelcore::utility::UTF8to16(text);
    for (auto& unit : units)
        if (IsControl(unit) || unit == kReplacement) unit = '?';
    return FromText(units);
}

std::string TerminalText::FoldCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

std::size_t TerminalText::GetWidth(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

}  // namespace tessaly
