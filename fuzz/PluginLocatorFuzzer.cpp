// The text form of locators, which stands in files, in the crash marker and in remote calls. A text that is one is the
// only one of its locator, and every locator has one.
#include <string>

#include <zelaudiofilterhost/PluginLocator.h>
#include <zelcore/Utf.h>

#include "LocatorHash.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"

using namespace zelaudiofilterhost;
using zelfuzz::Expect;
using zelfuzz::FuzzInput;

namespace {

void TryText(const ustring& text) {
    const PluginLocator locator = PluginLocator::FromString(text);
    if (locator == PluginLocator()) return;
    Expect(!locator.GetPath().empty(), "what is read names a plug-in");
    Expect(text.size() <= PluginLocator::kMaxTextLength, "no text is too long");
    Expect(locator.ToString() == text, "a locator has one text");
}

void TryParts(unsigned technology, const ustring& path, const ustring& subcomponent) {
    const PluginLocator locator(static_cast<TechnologyType>(kTechnologyBuiltIn + technology % 4), path, subcomponent);
    const ustring text = locator.ToString();
    for (const unsigned short unit : text) Expect(unit != '\n' && unit != '\r' && unit != 0, "the text is one line");
    const PluginLocator again = PluginLocator::FromString(text);
    const bool isUsable = !path.empty() && text.size() <= PluginLocator::kMaxTextLength;
    Expect(again == (isUsable ? locator : PluginLocator()), "every locator that names something has a text");
    Expect(!isUsable || LocatorHash()(again) == LocatorHash()(locator), "what is equal hashes alike");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view all(reinterpret_cast<const char*>(bytes), size);
    TryText(zelcore::utility::UTF8to16(all));
    TryText(zelfuzz::ToUnits(all));
    FuzzInput input(bytes, size);
    const unsigned technology = input.TakeByte();
    const ustring subcomponent = zelfuzz::ToUnits(input.TakeBytes(input.TakeByte()));
    TryParts(technology, zelfuzz::ToUnits(input.TakeRest()), subcomponent);
    return 0;
}
