#include <zelaudiofilterhost/AudioFilter.h>

#include <zelaudiofilterhost/AudioFilterEditor.h>

namespace zelaudiofilterhost {

AudioFilter::AudioFilter() = default;

AudioFilter::~AudioFilter() = default;

bool AudioFilter::HasEditor() const { return false; }

boost::intrusive_ptr<AudioFilterEditor> AudioFilter::GetEditor() { return nullptr; }

}  // namespace zelaudiofilterhost
