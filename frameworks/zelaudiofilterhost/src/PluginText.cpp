#include "PluginText.h"

#include <algorithm>
#include <cstring>

#include <zelaudiofilterhost/PluginComponentInfo.h>
#include <zelcore/Utf.h>

#include "PluginCall.h"

namespace zelaudiofilterhost {

namespace {

constexpr std::size_t kMaxReasonPart = 200;

/// The control characters of ASCII and Latin-1, and the two code units that are no characters and that XML forbids.
bool IsUnfit(unsigned short unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0xFFFE || unit == 0xFFFF;
}

zelcore::ustring Clean(zelcore::ustring text) {
    std::replace_if(text.begin(), text.end(), IsUnfit, static_cast<unsigned short>(' '));
    const auto isSpace = [](unsigned short unit) { return unit == ' '; };
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), isSpace));
    if (text.size() > PluginComponentInfo::kMaxTextLength) {
        text.resize(PluginComponentInfo::kMaxTextLength);
        if ((text.back() & 0xFC00) == 0xD800) text.pop_back();
    }
    while (!text.empty() && isSpace(text.back())) text.pop_back();
    return text;
}

}  // namespace

zelcore::ustring CleanPluginText(const char* buffer, std::size_t size) {
    return Clean(zelcore::utility::UTF8to16(std::string_view(buffer, strnlen(buffer, size))));
}

zelcore::ustring CleanPluginText(const zelcore::ustring& text) {
    // There and back replaces the surrogates that have no partner.
    return Clean(zelcore::utility::UTF8to16(zelcore::utility::UTF16to8(text)));
}

std::string PrintableText(std::string_view text) {
    std::string printable(text.substr(0, kMaxReasonPart));
    std::replace_if(
        printable.begin(), printable.end(), [](char byte) { return byte < ' ' || byte > '~'; }, '?');
    return printable;
}

std::string PrintableText(const char* text) {
    return text == nullptr ? std::string() : PrintableText(std::string_view(text, strnlen(text, kMaxReasonPart)));
}

}  // namespace zelaudiofilterhost
