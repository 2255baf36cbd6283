#pragma once

#include <string>
#include <vector>

#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>

namespace zeltests {

typedef std::vector<float> Samples;

/// The descriptors of a VST2 test plug-in: ReadVst("good/zel_gain").
std::vector<boost::intrusive_ptr<zelaudiofilterhost::AudioFilterDescriptor>> ReadVst(const std::string& name);
/// A filter of the plug-in's component of that position.
boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> MakeVst(const std::string& name, std::size_t component = 0);

/// A value for each frame that differs from those beside it and from those of the other channels.
Samples Signal(int channel, int frames);
/// Processes a block with Signal in every input. The outputs lie in longer buffers full of rubbish; it is an error when
/// more than the block is written there, or anything into the inputs.
std::vector<Samples> Process(zelaudiofilterhost::AudioFilter& filter, int frames);

}  // namespace zeltests
