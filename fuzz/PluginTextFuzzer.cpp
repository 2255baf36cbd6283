// Texts that plug-ins leave in the host's buffers. What is shown and kept of them is one line of well-formed text.
#include <string>
#include <vector>

#include <zelaudiofilterhost/PluginComponentInfo.h>
#include <zelcore/Utf.h>

#include "PluginCall.h"
#include "PluginText.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"

using zelaudiofilterhost::CleanPluginText;
using zelcore::ustring;
using zelfuzz::Expect;

namespace {

void CheckClean(const ustring& text) {
    Expect(text.size() <= zelaudiofilterhost::PluginComponentInfo::kMaxTextLength, "a text is not too long");
    Expect(zelcore::utility::UTF8to16(zelcore::utility::UTF16to8(text)) == text, "a text is well formed");
    for (const unsigned short unit : text) {
        Expect(unit >= 0x20 && (unit < 0x7F || unit >= 0xA0) && unit < 0xFFFE, "a text has no control characters");
    }
    Expect(text.empty() || (text.front() != ' ' && text.back() != ' '), "a text has no spaces at its ends");
    const std::u16string copy(text.begin(), text.end());
    Expect(CleanPluginText(copy.data(), copy.size()) == text, "what is clean stays as it is");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    // In memory of their own, so that reading beyond their ends is seen.
    if (size < sizeof(char16_t)) return 0;
    const std::vector<char> buffer(bytes, bytes + size);
    CheckClean(CleanPluginText(buffer.data(), buffer.size()));
    const ustring units = zelfuzz::ToUnits({buffer.data(), buffer.size()});
    const std::vector<char16_t> wide(units.begin(), units.end());
    CheckClean(CleanPluginText(wide.data(), wide.size()));
    const std::string printable = zelaudiofilterhost::PrintableText(std::string_view(buffer.data(), buffer.size()));
    Expect(printable.size() <= size, "what is printed is not longer");
    for (const char c : printable) Expect(c >= ' ' && c <= '~', "what is printed is plain");
    return 0;
}
