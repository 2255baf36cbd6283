#pragma once

#include <string>
#include <vector>

#include <zelaudiofilterhost/AudioFilter.h>

namespace zeltests {

/// A layout by its name ("5.1"), which it must have, or by the signs of its channels, where "-" is a discrete one:
/// "L R - Lfe". No channels for an empty text.
zelmediatypes::AudioChannelLayout Layout(const std::string& text);
/// The signs: "L R - Lfe".
std::string Signs(const zelmediatypes::AudioChannelLayout& layout);

/// A bus of such a layout.
zelaudiofilterhost::AudioFilterBusDescription Main(const std::string& layout, const std::string& name = "");
zelaudiofilterhost::AudioFilterBusDescription Aux(const std::string& layout, const std::string& name = "");

/// "Program: L R", or "Key (aux): M", for each bus.
std::vector<std::string> Texts(const zelaudiofilterhost::AudioFilterBusList& buses);
/// Of the buses that a filter has now.
std::vector<std::string> BusTexts(const zelaudiofilterhost::AudioFilter& filter,
                                  zelaudiofilterhost::AudioFilter::Direction direction);

/// A map as text: for each effect channel its target, "-" for none: "0 1 - 2".
std::string MapText(const zelaudiofilterhost::ChannelMap& map);
zelaudiofilterhost::ChannelMap Map(const std::string& text);

}  // namespace zeltests
