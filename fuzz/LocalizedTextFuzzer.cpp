// Localised texts, their placeholders, and the conversions between UTF-8 and UTF-16. Whatever the bytes are, what comes
// out is well formed, and what is well formed stays as it is.
#include <string>
#include <vector>

#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>

#include "support/Expect.h"
#include "support/FuzzInput.h"

using namespace zelcore::utility;
using zelcore::ustring;
using zelcore::utf8string;
using zelfuzz::Expect;
using zelfuzz::FuzzInput;

namespace {

bool IsHigh(unsigned short unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLow(unsigned short unit) { return (unit & 0xFC00) == 0xDC00; }

bool IsWellFormed(const ustring& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsLow(text[i])) return false;
        if (!IsHigh(text[i])) continue;
        if (++i == text.size() || !IsLow(text[i])) return false;
    }
    return true;
}

void TryConversions(std::string_view bytes, const ustring& units) {
    const ustring wide = UTF8to16(bytes);
    Expect(IsWellFormed(wide) && wide.size() <= bytes.size(), "bytes become well-formed text, not longer than they");
    Expect(UTF8to16(UTF16to8(wide)) == wide, "well-formed text goes there and back");
    const utf8string narrow = UTF16to8(units);
    Expect(narrow.size() <= 3 * units.size(), "three bytes a unit are enough");
    Expect(UTF16to8(UTF8to16(narrow)) == narrow, "well-formed bytes go there and back");
    Expect(!IsWellFormed(units) || UTF8to16(narrow) == units, "well-formed units go there and back");
    Expect(AsciiToUTF16(bytes).size() == bytes.size(), "a unit for each byte");
}

/// By the definition, one occurrence after the other.
int ReplaceSlowly(ustring& text, const ustring& token, const ustring& replacement) {
    int count = 0;
    for (std::size_t at = 0; !token.empty() && (at = text.find(token, at)) != ustring::npos; ++count) {
        text = text.substr(0, at) + replacement + text.substr(at + token.size());
        at += replacement.size();
    }
    return count;
}

void TryReplacing(const ustring& text, const ustring& token, const ustring& replacement) {
    ustring replaced = text, slowly = text;
    const int count = ReplaceInString(replaced, token, replacement);
    Expect(count == ReplaceSlowly(slowly, token, replacement) && replaced == slowly,
           "each occurrence is replaced once");
    ustring itself = text;
    ReplaceInString(itself, token, itself);
    ustring copied = text;
    ReplaceInString(copied, token, text);
    Expect(itself == copied, "a text may be its own replacement");
}

void TryPlaceholders(const ustring& text, const ustring& first, const ustring& second) {
    const ustring filled = FillPlaceholders(text, {first, second});
    // Piece by piece, each of which has its "@" at its beginning.
    ustring expected = text.substr(0, text.find('@'));
    for (std::size_t at = text.find('@'); at != ustring::npos;) {
        const std::size_t next = text.find('@', at + 1);
        const ustring piece = text.substr(at, next == ustring::npos ? next : next - at);
        const bool isFirst = piece.size() > 1 && piece[1] == '0', isSecond = piece.size() > 1 && piece[1] == '1';
        expected += isFirst ? first + piece.substr(2) : isSecond ? second + piece.substr(2) : piece;
        at = next;
    }
    Expect(filled == expected, "placeholders are filled, and nothing else is touched");
    Expect(FillPlaceholders(text, {}) == text, "without values a text stays as it is");
}

void TryLocalizing(std::string_view bytes) {
    const ustring text = zelcore::config::Localize(bytes);
    const std::size_t equals = bytes.find('=');
    const bool isKey = bytes.starts_with("$$$/") && equals != std::string_view::npos;
    Expect(text == UTF8to16(isKey ? bytes.substr(equals + 1) : bytes), "without a dictionary a text is its default");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view all(reinterpret_cast<const char*>(bytes), size);
    TryConversions(all, zelfuzz::ToUnits(all));
    // One a line: the text, what is looked for, what takes its place.
    FuzzInput input(bytes, size);
    const std::string_view text = input.TakeLine();
    const ustring wide = zelcore::config::Localize(text);
    const ustring token = UTF8to16(input.TakeLine()), replacement = UTF8to16(input.TakeLine());
    TryLocalizing(text);
    TryReplacing(wide, token, replacement);
    TryPlaceholders(wide, token, replacement);
    return 0;
}
