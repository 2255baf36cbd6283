#include "ChannelLayoutName.h"

#include "TerminalText.h"
#include "UsageError.h"

namespace tessaly {

zelmediatypes::AudioChannelLayout ChannelLayoutName::Parse(const std::string& name) {
    const zelmediatypes::AudioChannelLayout layout = zelmediatypes::MakeChannelLayoutForName(name);
    if (!layout.empty()) return layout;
    std::string names;
    for (const std::string_view known : zelmediatypes::GetChannelLayoutNames()) names.append(known).append(", ");
    throw UsageError("there is no channel layout '" + TerminalText::MakePrintable(name) + "', but " + names +
                     "or a number of channels");
}

}  // namespace tessaly
