#include "XmlText.h"

#include <algorithm>
#include <array>
#include <charconv>

#include <zelcore/Utf.h>

namespace zelaudiofilterhost {

namespace {

using zelcore::ustring;

constexpr std::size_t kEscapeLength = 6;  // \uXXXX

constexpr std::array<bool, 128> MakePlainTable() {
    std::array<bool, 128> plain{};
    for (std::size_t unit = 0x20; unit < 0x7F; ++unit) {
        plain[unit] = unit != '&' && unit != '<' && unit != '>' && unit != '"' && unit != '\\';
    }
    return plain;
}

constexpr std::array<bool, 128> kPlain = MakePlainTable();

bool IsPlain(ustring::value_type unit) { return unit < kPlain.size() && kPlain[unit]; }

bool IsHighSurrogate(ustring::value_type unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(ustring::value_type unit) { return (unit & 0xFC00) == 0xDC00; }

void AppendBackslashed(std::string& out, ustring::value_type unit) {
    static const char kDigits[] = "0123456789abcdef";
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) out.push_back(kDigits[(unit >> shift) & 15]);
}

void AppendUtf8(std::string& out, std::uint32_t character) {
    const auto tail = [&out, character](int shift) {
        out.push_back(static_cast<char>(0x80 | ((character >> shift) & 0x3F)));
    };
    if (character < 0x80) {
        out.push_back(static_cast<char>(character));
    } else if (character < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (character >> 6)));
        tail(0);
    } else if (character < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (character >> 12)));
        tail(6), tail(0);
    } else {
        out.push_back(static_cast<char>(0xF0 | (character >> 18)));
        tail(12), tail(6), tail(0);
    }
}

/// A code unit that is neither plain nor half of a pair.
void AppendSpecial(std::string& out, ustring::value_type unit) {
    switch (unit) {
        case '&':
            out += "&amp;";
            return;
        case '<':
            out += "&lt;";
            return;
        case '>':
            out += "&gt;";
            return;
        case '"':
            out += "&quot;";
            return;
        case '\\':
            out += "\\\\";
            return;
        default:
            break;
    }
    const bool isNoXml = unit < 0x20 || unit >= 0xFFFE || IsHighSurrogate(unit) || IsLowSurrogate(unit);
    if (isNoXml) {
        AppendBackslashed(out, unit);
    } else {
        AppendUtf8(out, unit);
    }
}

void AppendValue(std::string& out, const ustring& value) {
    std::size_t position = 0;
    while (position < value.size()) {
        // Nearly all text is runs of plain ASCII: a run is narrowed at once, which is what makes a full save quick.
        const std::size_t begin = position;
        while (position < value.size() && IsPlain(value[position])) ++position;
        const std::size_t length = out.size();
        out.resize(length + (position - begin));
        for (std::size_t i = begin; i < position; ++i) out[length + (i - begin)] = static_cast<char>(value[i]);
        if (position == value.size()) break;

        const ustring::value_type unit = value[position++];
        if (IsHighSurrogate(unit) && position < value.size() && IsLowSurrogate(value[position])) {
            const std::uint32_t high = unit & 0x3FFu, low = value[position++] & 0x3FFu;
            AppendUtf8(out, 0x10000u + (high << 10) + low);
        } else {
            AppendSpecial(out, unit);
        }
    }
}

void AppendName(std::string& out, std::string_view name) {
    out.push_back(' ');
    out += name;
    out += "=\"";
}

template <typename Number>
void AppendNumber(std::string& out, std::string_view name, Number value) {
    char digits[24];
    const std::to_chars_result result = std::to_chars(digits, digits + sizeof digits, value);
    AppendName(out, name);
    out.append(digits, result.ptr);
    out.push_back('"');
}

template <typename Number>
bool ParseWhole(std::string_view text, Number& number) {
    Number parsed = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), parsed);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return false;
    number = parsed;
    return true;
}

/// The value of a lower-case hex digit, or -1.
int HexValue(ustring::value_type unit) {
    if (unit >= '0' && unit <= '9') return unit - '0';
    return unit >= 'a' && unit <= 'f' ? unit - 'a' + 10 : -1;
}

/// Reads the \uXXXX that begins at `position`; false when there is none.
bool ReadBackslashed(const ustring& text, std::size_t position, ustring::value_type& unit) {
    if (text.size() - position < kEscapeLength || text[position + 1] != 'u') return false;
    int value = 0;
    for (std::size_t i = position + 2; i < position + kEscapeLength; ++i) {
        const int digit = HexValue(text[i]);
        if (digit < 0) return false;
        value = value * 16 + digit;
    }
    unit = static_cast<ustring::value_type>(value);
    return true;
}

}  // namespace

void AppendAttribute(std::string& out, std::string_view name, const ustring& value) {
    AppendName(out, name);
    AppendValue(out, value);
    out.push_back('"');
}

void AppendAttribute(std::string& out, std::string_view name, std::int64_t value) { AppendNumber(out, name, value); }

void AppendAttribute(std::string& out, std::string_view name, std::uint64_t value) { AppendNumber(out, name, value); }

ustring DecodeAttribute(std::string_view value) {
    ustring text = zelcore::utility::UTF8to16(value);
    std::size_t length = 0;
    for (std::size_t position = 0; position < text.size();) {
        ustring::value_type unit = text[position];
        std::size_t used = 1;
        if (unit == '\\' && position + 1 < text.size()) {
            if (text[position + 1] == '\\') {
                used = 2;
            } else if (ReadBackslashed(text, position, unit)) {
                used = kEscapeLength;
            }
        }
        text[length++] = unit;
        position += used;
    }
    text.resize(length);
    return text;
}

bool ParseNumber(std::string_view text, std::int64_t& number) { return ParseWhole(text, number); }

bool ParseNumber(std::string_view text, std::uint64_t& number) { return ParseWhole(text, number); }

}  // namespace zelaudiofilterhost
