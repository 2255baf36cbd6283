#include "TerminalText.h"

#include <algorithm>

#include <zelcore/Utf.h>

namespace tessaly {

std::string TerminalText::FromText(const zelcore::ustring& text) {
    const zelcore::utf8string bytes = zelcore::utility::UTF16to8(text);
    return std::string(bytes.data(), bytes.size());
}

std::string TerminalText::MakePrintable(const std::string& text) {
    std::string result = text;
    for (char& c : result)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = '?';
    return result;
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
