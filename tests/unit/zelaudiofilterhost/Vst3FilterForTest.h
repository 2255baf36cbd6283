#pragma once

#include <string>
#include <vector>

#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>

#include "Vst2FilterForTest.h"

namespace zeltests {

/// The descriptors of a VST3 bundle: ReadVst3(TestPlugin("vst3/good/ZelGain3.vst3")).
std::vector<boost::intrusive_ptr<zelaudiofilterhost::AudioFilterDescriptor>> ReadVst3(const std::string& path);
/// A filter of the first component of a VST3 test plug-in: MakeVst3("good/ZelGain3").
boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> MakeVst3(const std::string& name);

/// Processes a block of ones in every input and returns the first sample of the first output.
float ProcessOnes(zelaudiofilterhost::AudioFilter& filter, int frames = 8);

/// `samples` with each multiplied.
Samples Scaled(Samples samples, float factor);

}  // namespace zeltests
