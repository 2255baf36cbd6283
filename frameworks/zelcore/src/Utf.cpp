#include <zelcore/Utf.h>

namespace zelcore {
namespace utility {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(unsigned unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(unsigned unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

void AppendUTF8(utf8string& out, char32_t code) {
    if (code < 0x80) {
        out.push_back(static_cast<char>(code));
        return;
    }
    if (code < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (code >> 6)));
    } else {
        if (code < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (code >> 12)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (code >> 18)));
            out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
        }
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    }
    out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
}

void AppendUTF16(ustring& out, char32_t code) {
    if (code < 0x10000) {
        out.push_back(static_cast<unsigned short>(code));
    } else {
        out.push_back(static_cast<unsigned short>(0xD800 + ((code - 0x10000) >> 10)));
        out.push_back(static_cast<unsigned short>(0xDC00 + ((code - 0x10000) & 0x3FF)));
    }
}

/// What a first byte promises: how many bytes follow it, its own bits, and the bounds of the second byte. These bounds
/// alone keep out overlong forms, surrogates and everything beyond U+10FFFF.
struct Lead {
    int following;
    char32_t bits;
    unsigned char secondMin;
    unsigned char secondMax;
};

Lead ReadLead(unsigned char byte) {
    if (byte < 0xC2) return {0, kReplacement, 0, 0};
    if (byte < 0xE0) return {1, static_cast<char32_t>(byte & 0x1F), 0x80, 0xBF};
    if (byte == 0xE0) return {2, 0x0, 0xA0, 0xBF};
    if (byte == 0xED) return {2, 0xD, 0x80, 0x9F};
    if (byte < 0xF0) return {2, static_cast<char32_t>(byte & 0x0F), 0x80, 0xBF};
    if (byte == 0xF0) return {3, 0x0, 0x90, 0xBF};
    if (byte < 0xF4) return {3, static_cast<char32_t>(byte & 0x07), 0x80, 0xBF};
    if (byte == 0xF4) return {3, 0x4, 0x80, 0x8F};
    return {0, kReplacement, 0, 0};
}

/// Reads one character that is not ASCII, or the longest beginning of one, and moves `position` behind it.
char32_t DecodeUTF8(std::string_view text, std::size_t& position) {
    const Lead lead = ReadLead(static_cast<unsigned char>(text[position++]));
    char32_t code = lead.bits;
    unsigned char min = lead.secondMin;
    unsigned char max = lead.secondMax;
    for (int i = 0; i < lead.following; ++i) {
        if (position == text.size()) return kReplacement;
        const unsigned char byte = static_cast<unsigned char>(text[position]);
        if (byte < min || byte > max) return kReplacement;
        code = (code << 6) | (byte & 0x3F);
        ++position;
        min = 0x80;
        max = 0xBF;
    }
    return code;
}

}  // namespace

utf8string UTF16to8(const ustring& text) {
    utf8string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            code = 0x10000 + ((code - 0xD800) << 10) + (text[i + 1] - 0xDC00u);
            ++i;
        } else if (IsHighSurrogate(text[i]) || IsLowSurrogate(text[i])) {
            code = kReplacement;
        }
        AppendUTF8(out, code);
    }
    return out;
}

ustring UTF8to16(std::string_view text) {
    ustring out;
    out.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const unsigned char byte = static_cast<unsigned char>(text[position]);
        if (byte < 0x80) {
            out.push_back(byte);
            ++position;
        } else {
            AppendUTF16(out, DecodeUTF8(text, position));
        }
    }
    return out;
}

ustring AsciiToUTF16(std::string_view text) {
    ustring out;
    out.reserve(text.size());
    for (const char c : text) {
        const unsigned char byte = static_cast<unsigned char>(c);
        out.push_back(byte < 0x80 ? byte : static_cast<unsigned short>(kReplacement));
    }
    return out;
}

}  // namespace utility
}  // namespace zelcore
