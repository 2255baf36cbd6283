#include <zelaudiofilterhost/AudioFilter.h>

namespace zelaudiofilterhost {

AudioFilter::AudioFilter() = default;

AudioFilter::~AudioFilter() = default;

}  // namespace zelaudiofilterhost
