#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DescribeForTest.h"
#include "support/ThrowAwayFolder.h"

using namespace zelaudiofilterhost;
using namespace zeltests;

namespace {

PluginComponentInfo OnlyComponent(const PluginDescription& description) {
    EXPECT_EQ(description.components.size(), 1u);
    return description.components.empty() ? PluginComponentInfo() : description.components.front();
}

PluginBusInfo Bus(const char* name, int channels, bool auxiliary = false) {
    return PluginBusInfo{zelcore::ustring(name, name + std::char_traits<char>::length(name)), channels, auxiliary};
}

}  // namespace

TEST(PluginDescriptionVst3Test, AnEffectTellsEverythingAboutItself) {
    const PluginDescription description = DescribeVst3(TestPlugin("vst3/good/ZelGain3.vst3"));
    const PluginComponentInfo gain = OnlyComponent(description);
    EXPECT_EQ(Text(description.name), "");
    EXPECT_EQ(Text(gain.componentId), "VST3-5A656C205465737420506C7567696E01");
    EXPECT_EQ(Text(gain.subcomponent), "");
    EXPECT_EQ(Text(gain.name), "Zel Gain 3");
    EXPECT_EQ(Text(gain.vendor), "Zel Test Plug-ins");
    EXPECT_EQ(Text(gain.version), "1.2.3");
    EXPECT_EQ(Text(gain.category), "Fx|Dynamics");
    EXPECT_EQ(gain.uniqueId, 0u);
    EXPECT_EQ(gain.versionNumber, 0);
    EXPECT_EQ(gain.parameterCount, 2);
    EXPECT_FALSE(gain.isInstrument);
    EXPECT_FALSE(gain.hasEditor);
    EXPECT_EQ(gain.inputBuses, std::vector<PluginBusInfo>{Bus("Input", 2)});
    EXPECT_EQ(gain.outputBuses, std::vector<PluginBusInfo>{Bus("Output", 2)});
}

TEST(PluginDescriptionVst3Test, AnInstrumentIsOneAndItsOwnControllerIsAsked) {
    const PluginComponentInfo synth = OnlyComponent(DescribeVst3(TestPlugin("vst3/good/ZelSynth3.vst3")));
    EXPECT_TRUE(synth.isInstrument);
    EXPECT_TRUE(synth.inputBuses.empty());
    EXPECT_EQ(synth.parameterCount, 1);
}

TEST(PluginDescriptionVst3Test, AnEffectThatMayServeAsAnInstrumentIsAnEffect) {
    EXPECT_FALSE(OnlyComponent(DescribeVst3(TestPlugin("vst3/good/ZelRing3.vst3"))).isInstrument);
}

TEST(PluginDescriptionVst3Test, ABundleThatWasRenamedIsStillFoundOutBehindALinkToo) {
    const ThrowAwayFolder folder;
    std::filesystem::copy(TestPlugin("vst3/good/ZelGain3.vst3"), folder.Path("gain-1.2.vst3"),
                          std::filesystem::copy_options::recursive);
    EXPECT_EQ(Text(OnlyComponent(DescribeVst3(folder.Path("gain-1.2.vst3"))).name), "Zel Gain 3");
    // Of two libraries neither is taken on a guess.
    const std::string contents = folder.Path("gain-1.2.vst3/Contents/" ZEL_BUNDLE_FOLDER "/");
    std::filesystem::copy_file(contents + "ZelGain3" ZEL_BUNDLE_MODULE, contents + "Other" ZEL_BUNDLE_MODULE);
    EXPECT_EQ(ReasonOfVst3(folder.Path("gain-1.2.vst3")),
              "no binary for this platform in the bundle (it has " ZEL_BUNDLE_FOLDER ")");
}

TEST(PluginDescriptionVst3Test, ASideChainIsAnAuxiliaryBus) {
    const PluginComponentInfo component = OnlyComponent(DescribeVst3(TestPlugin("vst3/good/ZelSideChain3.vst3")));
    EXPECT_EQ(component.inputBuses, (std::vector<PluginBusInfo>{Bus("Input", 2), Bus("Side-chain", 1, true)}));
}

TEST(PluginDescriptionVst3Test, EveryClassOfAModuleIsAComponentOfItsOwn) {
    const PluginDescription several = DescribeVst3(TestPlugin("vst3/good/ZelSeveral3.vst3"));
    EXPECT_EQ(Text(several.name), "ZelSeveral3");
    ASSERT_EQ(several.components.size(), 3u);
    EXPECT_EQ(Text(several.components[0].name), "Several First");
    EXPECT_EQ(Text(several.components[0].subcomponent), "5A656C205465737420506C7567696E0B");
    EXPECT_EQ(Text(several.components[1].componentId), "VST3-5A656C205465737420506C7567696E0C");
    EXPECT_EQ(several.components[1].parameterCount, 1);
    EXPECT_TRUE(several.components[2].isInstrument);
}

TEST(PluginDescriptionVst3Test, OneClassOfAModuleCanBeAskedForAlone) {
    const std::string path = TestPlugin("vst3/good/ZelSeveral3.vst3");
    const PluginDescription second = DescribeVst3(path, "5A656C205465737420506C7567696E0C");
    EXPECT_EQ(Text(OnlyComponent(second).name), "Several Second");
    EXPECT_EQ(Text(OnlyComponent(second).subcomponent), "5A656C205465737420506C7567696E0C");
    EXPECT_THROW(DescribeVst3(path, "FF"), PluginLoadError);
}

TEST(PluginDescriptionVst3Test, ABareFileIsAPluginToo) {
    ThrowAwayFolder folder;
    const std::string file = folder.Path("Bare.vst3");
    std::filesystem::copy_file(
        TestPlugin("vst3/good/ZelGain3.vst3/Contents/" ZEL_BUNDLE_FOLDER "/ZelGain3" ZEL_BUNDLE_MODULE), file);
    EXPECT_EQ(Text(OnlyComponent(DescribeVst3(file)).name), "Zel Gain 3");
}

TEST(PluginDescriptionVst3Test, NonsenseIsCutToWhatMakesSense) {
    const PluginComponentInfo nonsense = OnlyComponent(DescribeVst3(TestPlugin("vst3/bad/Nonsense3.vst3")));
    EXPECT_EQ(nonsense.name, zelcore::ustring(64, 0xFFFD));
    EXPECT_EQ(Text(nonsense.vendor), std::string(64, 'V'));
    EXPECT_EQ(Text(nonsense.version), "");
    EXPECT_EQ(nonsense.parameterCount, PluginComponentInfo::kMaxParameters);
    ASSERT_EQ(nonsense.inputBuses.size(), PluginComponentInfo::kMaxBuses);
    EXPECT_EQ(nonsense.inputBuses[0].channelCount, PluginComponentInfo::kMaxChannels);
    EXPECT_EQ(nonsense.inputBuses[1].channelCount, 0);
    EXPECT_EQ(nonsense.inputBuses[0].name, zelcore::ustring(128, 0xFFFD));
    EXPECT_TRUE(nonsense.outputBuses.empty());
}

TEST(PluginDescriptionVst3Test, AModuleThatIsNoPluginSaysWhy) {
    EXPECT_EQ(ReasonOfVst3(TestPlugin("vst3/bad/Empty3.vst3")), "contains no effects or instruments");
    EXPECT_EQ(ReasonOfVst3(TestPlugin("vst3/bad/NullFactory3.vst3")), "its entry point returned nothing");
    EXPECT_EQ(ReasonOfVst3(TestPlugin("vst3/bad/RefusesStart3.vst3")), "refused to start");
    EXPECT_EQ(ReasonOfVst3(TestPlugin("vst/good/zel_gain" ZEL_MODULE)),
              "has no VST3 entry point (GetPluginFactory is missing)");
}

TEST(PluginDescriptionVst3Test, AnEffectThatDoesNotStartIsNotEnded) {
    // Ending it would crash this process.
    EXPECT_EQ(ReasonOfVst3(TestPlugin("vst3/bad/RefusesInit3.vst3")), "refused to be opened");
}

TEST(PluginDescriptionVst3Test, ExceptionsBecomeReasons) {
    EXPECT_EQ(ReasonOfVst3(TestPlugin("vst3/bad/Throws3.vst3")),
              "threw an exception when it was opened: no sound today");
}

TEST(PluginDescriptionVst3Test, HalvesAreSeparatedBeforeTheyAreEndedWhenConnectingFails) {
    EXPECT_EQ(ReasonOfVst3(TestPlugin("vst3/bad/ThrowsWhenConnected3.vst3")),
              "threw an exception when it was opened: no wire");
}

TEST(PluginDescriptionVst3Test, BundlesWithoutABinaryForThisPlatformSayWhatTheyHave) {
    EXPECT_EQ(ReasonOfVst3(TestPlugin("notplugins/NoBinary.vst3")), "no binary for this platform in the bundle");
    EXPECT_EQ(ReasonOfVst3(TestPlugin("notplugins/OtherPlatform.vst3")),
              "no binary for this platform in the bundle (it has MacOS)");
    EXPECT_EQ(ReasonOfVst3(TestPlugin("notplugins/folder" ZEL_MODULE)), "is a folder, but no VST3 bundle");
    EXPECT_EQ(ReasonOfVst3(TestPlugin("notplugins/NotThere.vst3")), "there is no such file");
}

TEST(PluginDescriptionVst3Test, ComponentAndControllerTalkThroughMessagesOfTheHost) {
    const PluginComponentInfo talkative = OnlyComponent(DescribeVst3(TestPlugin("vst3/good/ZelTalkative3.vst3")));
    // Its controller has as many parameters as its component tells it in a message.
    EXPECT_EQ(talkative.parameterCount, 7);
    ASSERT_EQ(talkative.outputBuses.size(), 1u);
    EXPECT_EQ(Text(talkative.outputBuses[0].name), "Zel Audio Filter Host; 42; 0.5; words; bytes");
}
