// What a program that only reads channel layouts and plug-ins uses: two frameworks, no windows.
#include <iostream>

#include <zelaudiofilterhost/PluginLocator.h>
#include <zelcore/Utf.h>
#include <zelmarshal/RPCError.h>
#include <zelmediatypes/AudioChannelLayout.h>

int main() {
    const zelaudiofilterhost::PluginLocator locator(zelaudiofilterhost::kTechnologyVST3,
                                                    zelcore::utility::AsciiToUTF16("/a.vst3"));
    const bool same = zelaudiofilterhost::PluginLocator::FromString(locator.ToString()) == locator;
    std::cout << zelmediatypes::MakeChannelLayoutForCount(6).size() << " channels, locator " << (same ? "kept" : "lost")
              << '\n';
    return same ? 0 : 1;
}
