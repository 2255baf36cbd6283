#pragma once

#include <string>
#include <vector>

#include <zelaudiofilterhost/AudioFilter.h>

namespace zeltests {

/// The first component of the module at a path.
boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> LoadFilter(const std::string& path);

/// Throws std::runtime_error when there is no parameter of that name.
int FindParameter(const zelaudiofilterhost::AudioFilter& filter, const std::string& name);
void SetParameter(zelaudiofilterhost::AudioFilter& filter, const std::string& name, float value);
/// Tries the values from 0 to 1 until the parameter's text starts like that; throws when none does.
void SetParameterToText(zelaudiofilterhost::AudioFilter& filter, const std::string& name, const std::string& start);

/// A track with its side-chain in which every channel has a tone of its own, and a filter in it.
class Track {
public:
    /// Puts the filter there and starts it. Layouts by their names; an empty side-chain for none.
    Track(zelaudiofilterhost::AudioFilter& filter, const std::string& layout, const std::string& sideChain);

    /// How loud each channel's tone is from now on, main channels first. Silent until it is set.
    void SetLevels(const std::vector<double>& levels);
    /// Processes for a while and then as long again, and measures that: of each tone, how loud it is in the main
    /// channel `output`.
    std::vector<double> Measure(std::size_t output);

private:
    void ProcessBlock();

    zelaudiofilterhost::AudioFilter& mFilter;
    std::size_t mMain;
    std::vector<double> mLevels;
    std::vector<std::vector<float>> mInputs;
    std::vector<std::vector<float>> mOutputs;
    long mFrame = 0;
};

}  // namespace zeltests
