#include "TrackForTest.h"

#include <cmath>
#include <complex>
#include <numbers>
#include <stdexcept>

#include <gtest/gtest.h>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelcore/Utf.h>

using namespace zelaudiofilterhost;

namespace zeltests {

namespace {

constexpr double kSampleRate = 48000.0;
constexpr int kFrames = 256;
constexpr int kBlocks = 150;

std::string ToString(const zelcore::ustring& text) {
    const zelcore::utf8string utf8 = zelcore::utility::UTF16to8(text);
    return std::string(utf8.begin(), utf8.end());
}

/// Hertz; each makes whole periods of kBlocks blocks, so that none is measured in another's place.
double GetFrequency(std::size_t channel) {
    return kSampleRate / (kFrames * kBlocks) * static_cast<double>(400 + 170 * channel);
}

double GetPhase(std::size_t channel, long frame) {
    return 2.0 * std::numbers::pi * GetFrequency(channel) * static_cast<double>(frame) / kSampleRate;
}

}  // namespace

boost::intrusive_ptr<AudioFilter> LoadFilter(const std::string& path) {
    const auto technology = path.ends_with(".vst3") ? kTechnologyVST3 : kTechnologyVST;
    return AudioFilterDescriptor::ReadModule({technology, zelcore::utility::UTF8to16(path)}).at(0)->CreateFilter();
}

int FindParameter(const AudioFilter& filter, const std::string& name) {
    for (int i = 0; i < filter.GetParameterCount(); ++i) {
        if (ToString(filter.GetParameterInfo(i)->GetName()) == name) return i;
    }
    throw std::runtime_error("no parameter is called " + name);
}

void SetParameter(AudioFilter& filter, const std::string& name, float value) {
    filter.SetParameterValue(FindParameter(filter, name), value);
}

void SetParameterToText(AudioFilter& filter, const std::string& name, const std::string& start) {
    constexpr int kSteps = 100;
    const int index = FindParameter(filter, name);
    for (int i = 0; i <= kSteps; ++i) {
        filter.SetParameterValue(index, static_cast<float>(i) / kSteps);
        if (ToString(filter.GetParameterValueString(index)).starts_with(start)) return;
    }
    throw std::runtime_error(name + " has no text that starts with " + start);
}

Track::Track(AudioFilter& filter, const std::string& layout, const std::string& sideChain) : mFilter(filter) {
    const auto main = zelmediatypes::MakeChannelLayoutForName(layout);
    const auto side = zelmediatypes::MakeChannelLayoutForName(sideChain);
    mMain = main.size();
    mLevels.assign(main.size() + side.size(), 0.0);
    mInputs.assign(mLevels.size(), std::vector<float>(kFrames));
    mOutputs.assign(mMain, std::vector<float>(kFrames));
    EXPECT_TRUE(filter.SetTargetFormat(main, AudioFilterBusDescription(zelcore::ustring(), side)));
    EXPECT_TRUE(filter.StartProcessing(kSampleRate, kFrames));
}

void Track::SetLevels(const std::vector<double>& levels) { mLevels = levels; }

std::vector<double> Track::Measure(std::size_t output) {
    for (int block = 0; block < kBlocks; ++block) ProcessBlock();
    std::vector<std::complex<double>> sums(mLevels.size());
    for (int block = 0; block < kBlocks; ++block) {
        const long first = mFrame;
        ProcessBlock();
        for (int frame = 0; frame < kFrames; ++frame) {
            const double sample = mOutputs[output][static_cast<std::size_t>(frame)];
            for (std::size_t tone = 0; tone < sums.size(); ++tone) {
                sums[tone] += sample * std::polar(1.0, GetPhase(tone, first + frame));
            }
        }
    }
    std::vector<double> levels;
    for (const std::complex<double>& sum : sums) levels.push_back(2.0 * std::abs(sum) / (kFrames * kBlocks));
    return levels;
}

void Track::ProcessBlock() {
    std::vector<const float*> inputs;
    std::vector<float*> outputs;
    for (std::size_t channel = 0; channel < mInputs.size(); ++channel) {
        for (int frame = 0; frame < kFrames; ++frame) {
            mInputs[channel][static_cast<std::size_t>(frame)] =
                static_cast<float>(mLevels[channel] * std::sin(GetPhase(channel, mFrame + frame)));
        }
        inputs.push_back(mInputs[channel].data());
    }
    for (std::vector<float>& output : mOutputs) outputs.push_back(output.data());
    mFilter.Process(inputs.data(), outputs.data(), kFrames);
    mFrame += kFrames;
}

}  // namespace zeltests
