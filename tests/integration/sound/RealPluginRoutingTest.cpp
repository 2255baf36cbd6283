#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelaudiofilterhost/PluginComponentInfo.h>
#include <zelaudiofilterhost/PluginDescription.h>
#include <zelcore/Utf.h>

#include "support/InstalledPlugins.h"
#include "support/PluginLeaks.h"
#include "TrackForTest.h"

namespace zeltests {

using namespace zelaudiofilterhost;

namespace {

typedef boost::intrusive_ptr<AudioFilter> FilterPtr;

constexpr double kQuiet = 0.05;
constexpr double kLoud = 0.9;
/// What counts as heard, and as not heard, of a tone of kQuiet.
constexpr double kHeard = kQuiet / 2;
constexpr double kUnheard = kQuiet / 1000;

/// A compressor with a side-chain, and what has to be done for it to listen to that.
struct SideChained {
    const char* path;
    const char* layout;
    void (*listen)(AudioFilter&);
    void (*ignore)(AudioFilter&);
};

void PrintTo(const SideChained& plugin, std::ostream* stream) { *stream << plugin.path; }

void ListenZam(AudioFilter& filter) {
    SetParameter(filter, "Threshold", 0.5f);
    SetParameter(filter, "Ratio", 1.0f);
    SetParameter(filter, "Sidechain", 1.0f);
}

void IgnoreZam(AudioFilter& filter) { SetParameter(filter, "Sidechain", 0.0f); }

void ListenLsp(AudioFilter& filter) {
    SetParameter(filter, "cr", 1.0f);
    SetParameterToText(filter, "sct", "Extern");
}

void IgnoreLsp(AudioFilter& filter) { SetParameterToText(filter, "sct", "Feed-fo"); }

class SideChainedPluginTest : public testing::TestWithParam<SideChained> {
protected:
    void SetUp() override {
        if (!IsInstalled(GetParam().path)) GTEST_SKIP() << GetParam().path << " is not installed";
        mFilter = LoadFilter(GetParam().path);
        mTrack.emplace(*mFilter, GetParam().layout, "mono");
        mMain = mFilter->GetChannelMapTargetChannelLayout().size();
        GetParam().listen(*mFilter);
        if (!HearsItsSideChain()) GTEST_SKIP() << GetParam().path << " does not hear what it is given as a side-chain";
    }

    /// How loud the first channel's tone comes out when the side-chain has that level.
    double MeasureWith(double sideChain) {
        std::vector<double> levels(mMain, kQuiet);
        levels.push_back(sideChain);
        mTrack->SetLevels(levels);
        const std::vector<double> tones = mTrack->Measure(0);
        EXPECT_LT(tones.back(), kUnheard) << "the side-chain itself is not heard";
        return tones.front();
    }

    IgnorePluginLeaks mIgnored;
    FilterPtr mFilter;
    std::optional<Track> mTrack;
    std::size_t mMain = 0;

private:
    /// Past all routing. There are plug-ins whose framework hands them their first bus only.
    bool HearsItsSideChain() { return MeasureDirectly(kLoud) < MeasureDirectly(0.0) / 2; }

    /// The peak of what comes out at last for a steady main signal.
    float MeasureDirectly(double sideChain) {
        constexpr int kFrames = 256;
        const std::vector<float> main(kFrames, static_cast<float>(kQuiet));
        const std::vector<float> key(kFrames, static_cast<float>(sideChain));
        std::vector<const float*> inputs(mMain, main.data());
        inputs.resize(static_cast<std::size_t>(mFilter->GetEffectChannelCount(AudioFilter::kInput)), key.data());
        std::vector<std::vector<float>> outputs(mMain, std::vector<float>(kFrames));
        std::vector<float*> pointers;
        for (std::vector<float>& output : outputs) pointers.push_back(output.data());
        for (int block = 0; block < 200; ++block) mFilter->ProcessEffect(inputs.data(), pointers.data(), kFrames);
        return *std::max_element(outputs[0].begin(), outputs[0].end());
    }
};

const SideChained kSideChained[] = {
    {"/usr/lib/vst/ZamComp-vst.so", "mono", ListenZam, IgnoreZam},
    {"/usr/lib/vst3/ZamComp.vst3", "mono", ListenZam, IgnoreZam},
    {"/usr/lib/vst/ZamCompX2-vst.so", "stereo", ListenZam, IgnoreZam},
    {"/usr/lib/vst3/ZamCompX2.vst3", "stereo", ListenZam, IgnoreZam},
    {"/usr/lib/vst/lsp-plugins/sc-compressor-mono.so", "mono", ListenLsp, IgnoreLsp},
    {"/usr/lib/vst/lsp-plugins/sc-compressor-stereo.so", "stereo", ListenLsp, IgnoreLsp}};

INSTANTIATE_TEST_SUITE_P(Installed, SideChainedPluginTest, testing::ValuesIn(kSideChained));

/// Stereo plug-ins that change next to nothing as they come.
class NeutralStereoPluginTest : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (!IsInstalled(GetParam())) GTEST_SKIP() << GetParam() << " is not installed";
        mFilter = LoadFilter(GetParam());
        mTrack.emplace(*mFilter, "stereo", "");
        mTrack->SetLevels({kQuiet, kQuiet});
    }

    /// How loud the tones of left and right are in an output.
    void Expect(std::size_t output, double left, double right) {
        const std::vector<double> tones = mTrack->Measure(output);
        EXPECT_NEAR(tones[0], left, kQuiet / 10) << "left in " << output;
        EXPECT_NEAR(tones[1], right, kQuiet / 10) << "right in " << output;
    }

    IgnorePluginLeaks mIgnored;
    FilterPtr mFilter;
    std::optional<Track> mTrack;
};

// Compressors with their threshold at full scale; an equaliser whose bands are even.
const char* const kNeutral[] = {"/usr/lib/vst/ZamCompX2-vst.so", "/usr/lib/vst3/ZamCompX2.vst3",
                                "/usr/lib/vst/3BandEQ-vst.so"};

INSTANTIATE_TEST_SUITE_P(Installed, NeutralStereoPluginTest, testing::ValuesIn(kNeutral));

void Check(const AudioFilterBusList& buses, int channels) {
    std::size_t count = 0;
    EXPECT_LE(buses.size(), PluginComponentInfo::kMaxBuses);
    for (const AudioFilterBusDescription& bus : buses) {
        count += bus.GetLayout().size();
        EXPECT_LE(bus.GetName().size(), PluginComponentInfo::kMaxTextLength);
        EXPECT_FALSE(bus.GetLayout().empty());
        for (const auto& channel : bus.GetLayout()) {
            const auto same = std::count(bus.GetLayout().begin(), bus.GetLayout().end(), channel);
            EXPECT_TRUE(same == 1 || channel.label == zelmediatypes::kChannelDiscrete);
        }
    }
    EXPECT_EQ(count, static_cast<std::size_t>(channels));
}

/// Reads the buses of all components of a module; false when it is none.
bool CheckModule(const std::string& path, std::map<std::string, std::vector<std::size_t>>& sideChains) {
    const auto technology = path.ends_with(".vst3") ? kTechnologyVST3 : kTechnologyVST;
    std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> descriptors;
    try {
        descriptors = AudioFilterDescriptor::ReadModule({technology, zelcore::utility::UTF8to16(path)});
    } catch (const PluginLoadError&) {
        return false;
    }
    for (const auto& descriptor : descriptors) {
        const FilterPtr filter = descriptor->CreateFilter();
        AudioFilterBusList inputs;
        AudioFilterBusList outputs;
        filter->GetBusConfiguration(inputs, outputs);
        Check(inputs, filter->GetEffectChannelCount(AudioFilter::kInput));
        Check(outputs, filter->GetEffectChannelCount(AudioFilter::kOutput));
        for (const AudioFilterBusDescription& bus : inputs) {
            if (bus.GetKind() == AudioFilterBusDescription::kAuxiliary)
                sideChains[std::filesystem::path(path).filename().string()].push_back(bus.GetLayout().size());
        }
        EXPECT_TRUE(
            filter->SetTargetFormat(zelmediatypes::MakeChannelLayoutForName("5.1"), AudioFilterBusDescription()));
        EXPECT_EQ(filter->GetChannelMap(AudioFilter::kInput).size(),
                  static_cast<std::size_t>(filter->GetEffectChannelCount(AudioFilter::kInput)));
    }
    return true;
}

}  // namespace

TEST_P(SideChainedPluginTest, ALoudSideChainDucksAndAQuietOneDoesNot) {
    const double free = MeasureWith(0.0);
    ASSERT_GT(free, kHeard);
    EXPECT_LT(MeasureWith(kLoud), free / 2);
    EXPECT_NEAR(MeasureWith(0.0), free, free / 10);
}

TEST_P(SideChainedPluginTest, ASideChainThatIsDisconnectedDoesNotDuck) {
    const double free = MeasureWith(0.0);
    const int key = mFilter->GetEffectChannelCount(AudioFilter::kInput) - 1;
    const ChannelMap connected = mFilter->GetChannelMap(AudioFilter::kInput);
    ASSERT_EQ(connected.at(key), static_cast<int>(mMain));
    for (int channel = static_cast<int>(mMain); channel <= key; ++channel) {
        mFilter->AssignChannelMapping(AudioFilter::kInput, channel, kNotConnected);
    }
    EXPECT_NEAR(MeasureWith(kLoud), free, free / 10);
    mFilter->AutoConnectSideChainChannels(false);
    EXPECT_EQ(mFilter->GetChannelMap(AudioFilter::kInput), connected);
    EXPECT_LT(MeasureWith(kLoud), free / 2);
}

TEST_P(SideChainedPluginTest, APluginThatDoesNotListenIsNotDucked) {
    GetParam().ignore(*mFilter);
    const double free = MeasureWith(0.0);
    EXPECT_NEAR(MeasureWith(kLoud), free, free / 10);
}

TEST_P(NeutralStereoPluginTest, LeftStaysLeftAndRightStaysRight) {
    Expect(0, kQuiet, 0.0);
    Expect(1, 0.0, kQuiet);
}

TEST_P(NeutralStereoPluginTest, SwappedInputsSwapTheSides) {
    mFilter->SetChannelMap({{0, 1}, {1, 0}}, AudioFilter::kInput);
    Expect(0, 0.0, kQuiet);
    Expect(1, kQuiet, 0.0);
}

TEST_P(NeutralStereoPluginTest, SwappedOutputsSwapTheSidesAndBothTogetherDoNot) {
    mFilter->SetChannelMap({{0, 1}, {1, 0}}, AudioFilter::kOutput);
    Expect(0, 0.0, kQuiet);
    Expect(1, kQuiet, 0.0);
    mFilter->SetChannelMap({{0, 1}, {1, 0}}, AudioFilter::kInput);
    Expect(0, kQuiet, 0.0);
    Expect(1, 0.0, kQuiet);
}

TEST_P(NeutralStereoPluginTest, BothOutputsInOneChannelAreTheirMean) {
    mFilter->SetChannelMap({{0, 0}, {1, 0}}, AudioFilter::kOutput);
    Expect(0, kQuiet / 2, kQuiet / 2);
    Expect(1, 0.0, 0.0);
}

TEST(RealPluginRoutingTest, BusesOfAllInstalledPluginsMakeSense) {
    const std::set<std::string> installed = FindInstalledPlugins();
    if (installed.empty()) GTEST_SKIP() << "no plug-ins are installed";
    const IgnorePluginLeaks ignored;
    std::map<std::string, std::vector<std::size_t>> sideChains;
    std::vector<std::string> notPlugins;
    for (const std::string& path : installed) {
        SCOPED_TRACE(path);
        if (!CheckModule(path, sideChains)) notPlugins.push_back(path);
    }
    EXPECT_LE(notPlugins.size(), 1u) << testing::PrintToString(notPlugins);
    // A plug-in has the same side-chain in both formats.
    for (const auto& [name, channels] : sideChains) {
        if (!name.ends_with(".vst3")) continue;
        const std::string twin = name.substr(0, name.size() - 5) + "-vst.so";
        if (!IsInstalled("/usr/lib/vst/" + twin)) continue;
        EXPECT_EQ(sideChains[twin], channels) << name;
    }
}

}  // namespace zeltests
