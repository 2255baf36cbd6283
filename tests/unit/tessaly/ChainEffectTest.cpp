#include <algorithm>
#include <filesystem>

#include <ChainEffect.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <SideChainBus.h>
#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhost/BannedPluginManager.h>

#include "SessionStage.h"

using namespace tessaly;
using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::HasSubstr;
using testing::IsEmpty;
using zelmediatypes::MakeChannelLayoutForCount;

namespace {

/// Plug-ins that a test moves about.
class ChainEffectTest : public testing::Test {
protected:
    std::string CopyGain(const std::string& name) const {
        const std::string path = mFolder.Path(name);
        std::filesystem::copy_file(TestPlugin("vst/good/zel_gain" ZEL_MODULE), path);
        return path;
    }
    ~ChainEffectTest() override {
        // What an effect that was found by its path has left for the views.
        AudioFilterDescriptorManager& manager = AudioFilterDescriptorManager::GetInstance();
        for (const char* const id : {"VST-5A476169", "VST-5A437468", "VST3-5A656C205465737420506C7567696E6E"})
            manager.RemoveDescriptor(UText(id));
    }

    const ThrowAwayFolder mFolder;
    const SearchFolders mSearchFolders{{mFolder.GetPath(), ZEL_TESTPLUGINS_DIR}};
};

EffectRecord RecordOf(const DescriptorPtr& descriptor, float firstValue = 0.25f) {
    const ChainEffect effect(*descriptor);
    effect.GetFilter()->SetParameterValue(0, firstValue);
    return effect.MakeRecord();
}

const AudioFilterBusDescription kNoSideChain;

void PutIntoTrack(ChainEffect& effect, std::size_t channels, std::size_t sideChain = 0) {
    effect.SetTargetFormat(MakeChannelLayoutForCount(channels),
                           SideChainBus::Make(MakeChannelLayoutForCount(sideChain)));
}

}  // namespace

TEST_F(ChainEffectTest, ANewOneIsWhatItsDescriptorSays) {
    const ChainEffect effect(*GainDescriptor());
    ASSERT_FALSE(effect.IsMissing());
    EXPECT_EQ(Text(effect.GetName()), "Zel Gain");
    EXPECT_EQ(Text(effect.GetVendor()), "Zel Test Plug-ins");
    EXPECT_EQ(Text(effect.GetTrouble()), "");
    EXPECT_FALSE(effect.IsBypassed());
    const EffectRecord record = effect.MakeRecord();
    EXPECT_EQ(Text(record.componentId), "VST-5A476169");
    EXPECT_EQ(record.locator, GainDescriptor()->GetLocator());
    EXPECT_EQ(record.state, effect.GetFilter()->GetState());
    EXPECT_FALSE(record.inputMap || record.outputMap);
}

TEST_F(ChainEffectTest, ANewOneWhosePluginIsGoneSaysWhy) {
    const std::string path = CopyGain("gain" ZEL_MODULE);
    const DescriptorPtr descriptor = ReadDescriptor(path);
    std::filesystem::remove(path);
    EXPECT_EQ(ErrorOf([&] { const ChainEffect effect(*descriptor); }), "Zel Gain there is no such file");
}

TEST_F(ChainEffectTest, OneOfASessionIsFoundWhereItWasAndGetsItsStateBack) {
    const EffectRecord record = RecordOf(ReadDescriptor(CopyGain("gain" ZEL_MODULE)));
    const ChainEffect effect(record);
    ASSERT_FALSE(effect.IsMissing());
    EXPECT_EQ(Text(effect.GetTrouble()), "");
    EXPECT_EQ(effect.GetFilter()->GetParameterValue(0), 0.25f);
    EXPECT_EQ(effect.MakeRecord(), record);
    // One that is in no catalogue has the same right to a view.
    EXPECT_TRUE(AudioFilterDescriptorManager::GetInstance().GetComponentDescriptorForID(record.componentId));
}

TEST_F(ChainEffectTest, TheCatalogueKnowsBetterWhereAPluginIs) {
    const std::string before = CopyGain("before" ZEL_MODULE);
    const EffectRecord record = RecordOf(ReadDescriptor(before));
    const DescriptorPtr moved = ReadDescriptor(CopyGain("after" ZEL_MODULE));
    AudioFilterDescriptorManager::GetInstance().AddDescriptor(moved);
    const ChainEffect effect(record);
    EXPECT_EQ(effect.MakeRecord().locator, moved->GetLocator());
    EXPECT_EQ(effect.GetFilter()->GetParameterValue(0), 0.25f);
}

TEST_F(ChainEffectTest, WhereTheCatalogueIsOutOfDateItIsFoundWhereItWas) {
    const EffectRecord record = RecordOf(ReadDescriptor(CopyGain("here" ZEL_MODULE)));
    const std::string gone = CopyGain("gone" ZEL_MODULE);
    AudioFilterDescriptorManager::GetInstance().AddDescriptor(ReadDescriptor(gone));
    std::filesystem::remove(gone);
    EXPECT_EQ(ChainEffect(record).MakeRecord(), record);
}

TEST_F(ChainEffectTest, AMissingOneKeepsAllThatIsKnownOfItUntilItIsThereAgain) {
    const std::string path = CopyGain("gain" ZEL_MODULE);
    EffectRecord record = RecordOf(ReadDescriptor(path));
    record.isBypassed = true;
    record.inputMap = {{0, 1}, {1, 0}};
    record.windows[kGenericEditor] = {1, 2, 3, 4};
    std::filesystem::rename(path, mFolder.Path("elsewhere" ZEL_MODULE));
    ChainEffect missing(record);
    EXPECT_TRUE(missing.IsMissing());
    EXPECT_EQ(Text(missing.GetTrouble()), "The plug-in Zel Gain cannot be loaded: there is no such file.");
    EXPECT_TRUE(missing.IsBypassed());
    PutIntoTrack(missing, 2);
    EXPECT_EQ(missing.MakeRecord(), record);
    const ChainEffect again(missing.MakeRecord());
    EXPECT_EQ(again.MakeRecord(), record);
    std::filesystem::rename(mFolder.Path("elsewhere" ZEL_MODULE), path);
    const ChainEffect back(again.MakeRecord());
    ASSERT_FALSE(back.IsMissing());
    EXPECT_EQ(back.GetFilter()->GetParameterValue(0), 0.25f);
    EXPECT_EQ(back.MakeRecord(), record);
}

TEST_F(ChainEffectTest, AMissingOneCanBeBypassedAndItsWindowsMoved) {
    EffectRecord record;
    record.componentId = UText("VST-00000001");
    record.name = UText("Gone");
    ChainEffect effect(record);
    EXPECT_EQ(Text(effect.GetTrouble()), "The plug-in Gone cannot be loaded: is not known.");
    effect.SetBypassed(true);
    effect.GetWindowPlaces()[kOwnEditor] = {1, 2, 3, 4};
    record.isBypassed = true;
    record.windows[kOwnEditor] = {1, 2, 3, 4};
    EXPECT_EQ(effect.MakeRecord(), record);
}

TEST_F(ChainEffectTest, ABannedPluginIsNotLoaded) {
    const std::string path = CopyGain("gain" ZEL_MODULE);
    const EffectRecord record = RecordOf(ReadDescriptor(path));
    BannedPluginManager::GetInstance().AddBannedPlugin(record.locator);
    const ChainEffect notKnown(record);
    AudioFilterDescriptorManager::GetInstance().AddDescriptor(ReadDescriptor(path));
    const ChainEffect known(record);
    BannedPluginManager::GetInstance().RemoveBannedPlugin(record.locator);
    for (const ChainEffect* effect : {&notKnown, &known}) {
        EXPECT_TRUE(effect->IsMissing());
        EXPECT_EQ(Text(effect->GetTrouble()), "The plug-in Zel Gain cannot be loaded: is banned.");
    }
}

TEST_F(ChainEffectTest, ASessionIsNoReasonToLoadAFileFromOutsideThePluginFolders) {
    const ThrowAwayFolder elsewhere;
    const std::string path = elsewhere.Path("gain" ZEL_MODULE);
    std::filesystem::copy_file(TestPlugin("vst/good/zel_gain" ZEL_MODULE), path);
    const std::string roundabout = mFolder.GetPath() + "/../" +
                                   std::filesystem::path(elsewhere.GetPath()).filename().string() + "/gain" ZEL_MODULE;
    ASSERT_TRUE(std::filesystem::exists(roundabout));
    EffectRecord record = RecordOf(ReadDescriptor(path));
    for (const std::string& named : {path, roundabout, mFolder.GetPath() + "x/gain" ZEL_MODULE}) {
        record.locator = PluginLocator(kTechnologyVST, UText(named));
        const ChainEffect effect(record);
        EXPECT_EQ(Text(effect.GetTrouble()),
                  "The plug-in Zel Gain cannot be loaded: is neither in the list of plug-ins nor in the plug-in "
                  "folders.")
            << named;
        EXPECT_EQ(effect.MakeRecord(), record);
    }
    const SearchFolders more({elsewhere.GetPath()});
    record.locator = PluginLocator(kTechnologyVST, UText(path));
    EXPECT_FALSE(ChainEffect(record).IsMissing());
}

TEST_F(ChainEffectTest, AnotherPluginInItsPlaceIsNotTaken) {
    const std::string path = CopyGain("gain" ZEL_MODULE);
    const EffectRecord record = RecordOf(ReadDescriptor(path));
    std::filesystem::remove(path);
    std::filesystem::copy_file(TestPlugin("vst/good/zel_plain" ZEL_MODULE), path);
    const ChainEffect effect(record);
    EXPECT_THAT(Text(effect.GetTrouble()), HasSubstr("does not contain this component any more"));
    EXPECT_EQ(effect.MakeRecord(), record);
}

TEST_F(ChainEffectTest, ThePluginOfASessionMustBeOne) {
    EffectRecord record;
    record.componentId = UText("VST-00000001");
    record.locator = PluginLocator(kTechnologyVST, UText("/etc/passwd"));
    EXPECT_TRUE(ChainEffect(record).IsMissing());
    record.locator = PluginLocator(kTechnologyBuiltIn, UText("/etc/passwd"));
    EXPECT_THAT(Text(ChainEffect(record).GetTrouble()), HasSubstr("is not known"));
}

TEST_F(ChainEffectTest, OneOfAShellIsFoundAgain) {
    for (std::size_t component = 0; component < 2; ++component) {
        const DescriptorPtr descriptor = ReadDescriptor(TestPlugin("vst/good/zel_shell" ZEL_MODULE), component);
        const EffectRecord record = ChainEffect(*descriptor).MakeRecord();
        EXPECT_EQ(ChainEffect(record).MakeRecord(), record);
        AudioFilterDescriptorManager::GetInstance().RemoveDescriptor(record.componentId);
    }
}

TEST_F(ChainEffectTest, MoreThanParametersComesBack) {
    for (const char* const name : {"vst/good/zel_chunk" ZEL_MODULE, "vst3/good/ZelState3.vst3"}) {
        const ChainEffect first(*ReadDescriptor(TestPlugin(name)));
        for (const float value : {0.1f, 0.75f}) {
            first.GetFilter()->SetParameterValue(0, value);
            HearOnes(first);
        }
        const ChainEffect second(first.MakeRecord());
        EXPECT_EQ(HearOnes(second), HearOnes(first)) << name;
        AudioFilterDescriptorManager::GetInstance().RemoveDescriptor(first.MakeRecord().componentId);
    }
}

// States

TEST_F(ChainEffectTest, OneThatDoesNotTakeItsStateBackSaysSoAndKeepsItUntilItChanges) {
    EffectRecord record = RecordOf(GainDescriptor());
    const AudioFilter::State damaged(50, 7);
    record.state = damaged;
    const ChainEffect effect(record);
    ASSERT_FALSE(effect.IsMissing());
    EXPECT_EQ(Text(effect.GetTrouble()), "The plug-in Zel Gain did not take its settings back.");
    EXPECT_EQ(effect.MakeRecord().state, damaged);
    effect.GetFilter()->SetParameterValue(0, 0.875f);
    EXPECT_EQ(effect.MakeRecord().state, effect.GetFilter()->GetState());
}

TEST_F(ChainEffectTest, OneThatFailsToGiveItsStateHasTheLastOneThatIsKnown) {
    const ChainEffect effect(*ReadDescriptor(TestPlugin("vst/good/zel_chunk_throws" ZEL_MODULE)));
    const AudioFilter::State before = effect.MakeRecord().state;
    EXPECT_FALSE(before.empty());
    effect.GetFilter()->SetParameterValue(0, 1.0f);
    ASSERT_THAT(effect.GetFilter()->GetState(), IsEmpty());
    EXPECT_EQ(effect.MakeRecord().state, before);
}

TEST_F(ChainEffectTest, OneWithoutAStateBeginsAsItIs) {
    EffectRecord record = RecordOf(GainDescriptor());
    record.state.clear();
    const ChainEffect effect(record);
    EXPECT_EQ(Text(effect.GetTrouble()), "");
    EXPECT_EQ(effect.GetFilter()->GetParameterValue(0), 0.5f);
}

// Maps

TEST_F(ChainEffectTest, TheBestFitIsNotKeptAndAnythingElseIs) {
    ChainEffect effect(*GainDescriptor());
    PutIntoTrack(effect, 2);
    EXPECT_FALSE(effect.MakeRecord().inputMap || effect.MakeRecord().outputMap);
    const ChannelMap bestFit = effect.GetFilter()->GetChannelMap(AudioFilter::kInput);
    effect.GetFilter()->AssignChannelMapping(AudioFilter::kInput, 0, 1);
    EXPECT_EQ(effect.MakeRecord().inputMap, effect.GetFilter()->GetChannelMap(AudioFilter::kInput));
    EXPECT_FALSE(effect.MakeRecord().outputMap);
    effect.GetFilter()->SetChannelMap(bestFit, AudioFilter::kInput);
    EXPECT_FALSE(effect.MakeRecord().inputMap);
}

TEST_F(ChainEffectTest, MapsOfASessionAreAppliedOnceInTheFirstTrack) {
    EffectRecord record = RecordOf(GainDescriptor());
    record.inputMap = {{0, 1}, {1, 0}};
    record.outputMap = {{0, kNotConnected}, {1, 0}};
    ChainEffect effect(record);
    EXPECT_EQ(effect.MakeRecord(), record) << "there is no track yet";
    PutIntoTrack(effect, 0);
    EXPECT_EQ(effect.MakeRecord(), record);
    PutIntoTrack(effect, 2);
    EXPECT_EQ(effect.GetFilter()->GetChannelMap(AudioFilter::kInput), *record.inputMap);
    EXPECT_EQ(effect.GetFilter()->GetChannelMap(AudioFilter::kOutput), *record.outputMap);
    EXPECT_EQ(effect.MakeRecord(), record);
    effect.GetFilter()->SetChannelMap({{0, 0}, {1, 1}}, AudioFilter::kInput);
    PutIntoTrack(effect, 2);
    EXPECT_FALSE(effect.MakeRecord().inputMap) << "the user's choice stays in the same track";
    PutIntoTrack(effect, 1);
    PutIntoTrack(effect, 2);
    EXPECT_FALSE(effect.MakeRecord().inputMap) << "another track, the best fit";
    EXPECT_EQ(effect.MakeRecord().outputMap, record.outputMap) << "the choice goes along";
}

TEST_F(ChainEffectTest, TheUsersRoutingStaysWhenASideChainComesAndGoes) {
    ChainEffect effect(*GainDescriptor());
    PutIntoTrack(effect, 2);
    const ChannelMap crossed = {{0, 1}, {1, 0}};
    effect.GetFilter()->SetChannelMap(crossed, AudioFilter::kInput);
    PutIntoTrack(effect, 2, 1);
    EXPECT_EQ(effect.GetFilter()->GetChannelMap(AudioFilter::kInput), crossed);
    PutIntoTrack(effect, 2);
    EXPECT_EQ(effect.GetFilter()->GetChannelMap(AudioFilter::kInput), crossed);
    EXPECT_EQ(effect.MakeRecord().inputMap, crossed);
}

TEST_F(ChainEffectTest, ASideChainIsHeardBesideTheUsersRoutingAndThatComesBackWithIt) {
    ChainEffect effect(*ReadDescriptor(TestPlugin("vst3/good/ZelSideChain3.vst3")));
    PutIntoTrack(effect, 2);
    effect.GetFilter()->AssignChannelMapping(AudioFilter::kInput, 0, 1);
    PutIntoTrack(effect, 2, 1);
    const ChannelMap both = effect.GetFilter()->GetChannelMap(AudioFilter::kInput);
    EXPECT_EQ(both.at(0), 1);
    EXPECT_TRUE(std::any_of(both.begin(), both.end(), [](const auto& entry) { return entry.second == 2; }));
    PutIntoTrack(effect, 2);
    EXPECT_EQ(effect.MakeRecord().inputMap, both) << "it does not fit now, and is kept";
    PutIntoTrack(effect, 2, 1);
    EXPECT_EQ(effect.GetFilter()->GetChannelMap(AudioFilter::kInput), both);
}

TEST_F(ChainEffectTest, AMapThatDoesNotFitIsKeptForATrackThatItFits) {
    const EffectRecord plain = RecordOf(GainDescriptor());
    for (const ChannelMap& map : {ChannelMap{{0, 2}, {1, 0}}, ChannelMap{{0, 0}}, ChannelMap{{0, 0}, {2, 1}},
                                  ChannelMap{{0, 0}, {1, 1}, {2, 1}}}) {
        EffectRecord record = plain;
        record.inputMap = map;
        ChainEffect effect(record);
        PutIntoTrack(effect, 2);
        EXPECT_EQ(effect.GetFilter()->GetChannelMap(AudioFilter::kInput), (ChannelMap{{0, 0}, {1, 1}}));
        EXPECT_EQ(effect.MakeRecord().inputMap, map);
    }
    EffectRecord record = plain;
    record.inputMap = {{0, 2}, {1, 0}};
    record.outputMap = {{0, 2}, {1, 0}};
    ChainEffect effect(record);
    PutIntoTrack(effect, 2, 1);
    EXPECT_EQ(effect.GetFilter()->GetChannelMap(AudioFilter::kInput), *record.inputMap) << "the side-chain's channel";
    EXPECT_EQ(effect.GetFilter()->GetChannelMap(AudioFilter::kOutput), (ChannelMap{{0, 0}, {1, 1}}))
        << "nothing goes into a side-chain";
    effect.GetFilter()->SetChannelMap({{0, 1}, {1, 1}}, AudioFilter::kOutput);
    EXPECT_EQ(effect.MakeRecord().outputMap, (ChannelMap{{0, 1}, {1, 1}})) << "what the user chose counts";
}
