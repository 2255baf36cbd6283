// Parameters whose name, label and display are all the same awkward text.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

/// By the book a text may have 8 bytes.
const char kLong[] =
    "A text that is far longer than a text may be, so long that whoever trusts the plug-in with a small buffer of a "
    "few "
    "bytes will find that whatever was kept behind it is gone when the answer comes back..";
static_assert(sizeof(kLong) == 201);

/// As the parameters are called in Vst2Facts.
const std::vector<const char*> kTexts = {"",
                                         kLong,
                                         "Gr\xC3\xB6\xC3\x9F"
                                         "e \xE9\x9F\xB3\xE9\x87\x8F \xF0\x9F\x8E\xB5",
                                         "Two\nlines\tand\x01 a bell\a\x7F",
                                         "Cut \xE9\x9F and stray \xFF\xC0\xAF",
                                         "  spaces around   "};

class Texts : public Vst2Plugin {
public:
    explicit Texts(vst2::HostCallback host) : Vst2Plugin(host, {"Zel Texts", 0x5A546578, 2, 2, kTexts}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        switch (operation) {
            case vst2::kGetParameterName:
            case vst2::kGetParameterLabel:
            case vst2::kGetParameterDisplay:
                return HasParameter(index) ? Answer(pointer, 256, kTexts[static_cast<std::size_t>(index)]) : 0;
            default:
                return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Texts(host))->GetEffect(); }
