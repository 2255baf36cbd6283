#pragma once

#include <string>
#include <vector>

#include <AudioFileReader.h>
#include <ChainEffect.h>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>

#include "support/ThrowAwayFolder.h"

namespace zeltests {

typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilterDescriptor> DescriptorPtr;

/// Full path of a test plug-in: TestPlugin("vst/good/zel_gain" ZEL_MODULE).
std::string TestPlugin(const std::string& name);
/// The only component, or that of the position, of a plug-in at a full path.
DescriptorPtr ReadDescriptor(const std::string& path, std::size_t component = 0);
DescriptorPtr GainDescriptor();

/// Makes these folders, beside the default ones, those in which plug-ins are looked for, while it lives.
class SearchFolders {
public:
    explicit SearchFolders(const std::vector<std::string>& folders);
    ~SearchFolders();
    SearchFolders(const SearchFolders&) = delete;
    SearchFolders& operator=(const SearchFolders&) = delete;
};

/// Writes a sound of silence.
void WriteSound(const std::string& path, int channels, int sampleRate = 48000, int frames = 480);

/// UTF-8, for comparing.
std::string Text(const zelcore::ustring& text);
zelcore::ustring UText(const std::string& text);

/// What an effect makes of a block of ones on each of its channels.
std::vector<float> HearOnes(const tessaly::ChainEffect& effect);

/// What `act` throws; "nothing" when it throws nothing.
template <typename Act>
std::string ErrorOf(Act act) {
    try {
        act();
        return "nothing";
    } catch (const std::exception& error) {
        return error.what();
    }
}

}  // namespace zeltests
