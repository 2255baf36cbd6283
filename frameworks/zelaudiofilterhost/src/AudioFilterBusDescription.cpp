#include <zelaudiofilterhost/AudioFilterBusDescription.h>

namespace zelaudiofilterhost {

AudioFilterBusDescription::AudioFilterBusDescription() : mKind(kMain) {}

AudioFilterBusDescription::AudioFilterBusDescription(const zelcore::ustring& name,
                                                     const zelmediatypes::AudioChannelLayout& layout, Kind kind)
    : mName(name), mLayout(layout), mKind(kind) {}

}  // namespace zelaudiofilterhost
