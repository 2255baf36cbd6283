#include "SideChainBus.h"

#include <zelcore/Localizer.h>

namespace tessaly {

using zelaudiofilterhost::AudioFilterBusDescription;

AudioFilterBusDescription SideChainBus::Make(const zelmediatypes::AudioChannelLayout& layout) {
    if (layout.empty()) return {};
    return {zelcore::config::Localize("$$$/tessaly/SideChain=Side-chain"), layout,
            AudioFilterBusDescription::kAuxiliary};
}

}  // namespace tessaly
