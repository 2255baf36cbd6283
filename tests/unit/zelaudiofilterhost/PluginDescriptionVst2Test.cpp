#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelaudiofilterhost/PluginModuleInfo.h>

#include "DescribeForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::HasSubstr;

namespace {

PluginComponentInfo OnlyComponent(const PluginDescription& description) {
    EXPECT_EQ(description.components.size(), 1u);
    return description.components.empty() ? PluginComponentInfo() : description.components.front();
}

std::vector<int> Channels(const std::vector<PluginBusInfo>& buses) {
    std::vector<int> channels;
    for (const PluginBusInfo& bus : buses) channels.push_back(bus.channelCount);
    return channels;
}

}  // namespace

TEST(PluginDescriptionVst2Test, AnEffectTellsEverythingAboutItself) {
    const PluginDescription description = DescribeVst(TestPlugin("vst/good/zel_gain" ZEL_MODULE));
    const PluginComponentInfo gain = OnlyComponent(description);
    EXPECT_EQ(Text(description.name), "");
    EXPECT_EQ(Text(gain.componentId), "VST-5A476169");
    EXPECT_EQ(Text(gain.subcomponent), "");
    EXPECT_EQ(Text(gain.name), "Zel Gain");
    EXPECT_EQ(Text(gain.vendor), "Zel Test Plug-ins");
    EXPECT_EQ(Text(gain.version), "1.2.3");
    EXPECT_EQ(Text(gain.category), "Effect");
    EXPECT_EQ(gain.versionNumber, 0x010203);
    EXPECT_EQ(gain.uniqueId, 0x5A476169u);
    EXPECT_EQ(gain.parameterCount, 4);
    EXPECT_FALSE(gain.isInstrument);
    EXPECT_FALSE(gain.hasEditor);
    EXPECT_EQ(Channels(gain.inputBuses), std::vector<int>{2});
    EXPECT_EQ(Channels(gain.outputBuses), std::vector<int>{2});
}

TEST(PluginDescriptionVst2Test, AnInstrumentIsOneAndHasNoInputBus) {
    const PluginComponentInfo synth = OnlyComponent(DescribeVst(TestPlugin("vst/good/zel_synth" ZEL_MODULE)));
    EXPECT_TRUE(synth.isInstrument);
    EXPECT_TRUE(synth.inputBuses.empty());
    EXPECT_EQ(Channels(synth.outputBuses), std::vector<int>{2});
}

TEST(PluginDescriptionVst2Test, SideChainChannelsCountAsInputs) {
    const PluginComponentInfo component = OnlyComponent(DescribeVst(TestPlugin("vst/good/zel_sidechain" ZEL_MODULE)));
    EXPECT_EQ(Channels(component.inputBuses), std::vector<int>{4});
}

TEST(PluginDescriptionVst2Test, EveryComponentOfAShellHasItsOwnId) {
    const PluginDescription shell = DescribeVst(TestPlugin("vst/good/zel_shell" ZEL_MODULE));
    EXPECT_EQ(Text(shell.name), "Zel Shell");
    ASSERT_EQ(shell.components.size(), 3u);
    EXPECT_EQ(Text(shell.components[0].componentId), "VST-5A536831");
    EXPECT_EQ(Text(shell.components[0].subcomponent), "5A536831");
    EXPECT_EQ(Text(shell.components[0].name), "Shell Mono");
    EXPECT_EQ(Channels(shell.components[0].inputBuses), std::vector<int>{1});
    EXPECT_EQ(Text(shell.components[1].name), "Shell Stereo");
    EXPECT_FALSE(shell.components[1].isInstrument);
    EXPECT_EQ(Text(shell.components[2].subcomponent), "5A536833");
    EXPECT_TRUE(shell.components[2].isInstrument);
}

TEST(PluginDescriptionVst2Test, OneComponentOfAShellCanBeAskedForAlone) {
    const PluginDescription shell = DescribeVst(TestPlugin("vst/good/zel_shell" ZEL_MODULE), "5A536832");
    EXPECT_EQ(Text(OnlyComponent(shell).name), "Shell Stereo");
    EXPECT_EQ(Text(OnlyComponent(shell).subcomponent), "5A536832");
    EXPECT_THROW(DescribeVst(TestPlugin("vst/good/zel_shell" ZEL_MODULE), "00000001"), PluginLoadError);
    EXPECT_THROW(DescribeVst(TestPlugin("vst/good/zel_gain" ZEL_MODULE), "00000001"), PluginLoadError);
}

TEST(PluginDescriptionVst2Test, TheOldEntryNameIsUnderstoodAndANamelessEffectIsCalledAsItsFile) {
    EXPECT_EQ(Text(OnlyComponent(DescribeVst(TestPlugin("vst/good/zel_old_entry" ZEL_MODULE))).name), "zel_old_entry");
}

TEST(PluginDescriptionVst2Test, TheHostAnswersEverythingFromAnyThreadWithAndWithoutAnEffect) {
    EXPECT_EQ(Text(OnlyComponent(DescribeVst(TestPlugin("vst/good/zel_curious" ZEL_MODULE))).name),
              "2400 Zel Audio Filter Host");
}

TEST(PluginDescriptionVst2Test, APluginCanBeDescribedAgainAndAgain) {
    const PluginComponentInfo first = OnlyComponent(DescribeVst(TestPlugin("vst/good/zel_gain" ZEL_MODULE)));
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(OnlyComponent(DescribeVst(TestPlugin("vst/good/zel_gain" ZEL_MODULE))), first);
    }
}

TEST(PluginDescriptionVst2Test, NonsenseIsCutToWhatMakesSense) {
    const PluginComponentInfo nonsense = OnlyComponent(DescribeVst(TestPlugin("vst/bad/nonsense" ZEL_MODULE)));
    EXPECT_EQ(nonsense.name, zelcore::ustring(PluginComponentInfo::kMaxTextLength, 0xFFFD));
    EXPECT_EQ(Text(nonsense.vendor), "");
    EXPECT_EQ(Text(nonsense.category), "");
    EXPECT_EQ(Text(nonsense.version), "");
    EXPECT_EQ(nonsense.parameterCount, PluginComponentInfo::kMaxParameters);
    EXPECT_TRUE(nonsense.inputBuses.empty());
    EXPECT_EQ(Channels(nonsense.outputBuses), std::vector<int>{PluginComponentInfo::kMaxChannels});
}

TEST(PluginDescriptionVst2Test, VersionsReadAsTheirMakersPackThem) {
    EXPECT_EQ(Text(OnlyComponent(DescribeVst(TestPlugin("vst/good/zel_old_entry" ZEL_MODULE))).version), "1.1.0.0");
    EXPECT_EQ(Text(OnlyComponent(DescribeVst(TestPlugin("vst/good/zel_curious" ZEL_MODULE))).version), "0.1.2");
    EXPECT_EQ(Text(OnlyComponent(DescribeVst(TestPlugin("vst/good/zel_careless" ZEL_MODULE))).version), "2.0.1.3");
    EXPECT_EQ(Text(OnlyComponent(DescribeVst(TestPlugin("vst/good/zel_synth" ZEL_MODULE))).version), "17");
}

TEST(PluginDescriptionVst2Test, AShellWithoutEndIsCutAtTheMostComponents) {
    EXPECT_EQ(DescribeVst(TestPlugin("vst/bad/endless_shell" ZEL_MODULE)).components.size(), kMaxComponents);
}

TEST(PluginDescriptionVst2Test, AShellThatRepeatsItselfIsReadOnce) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/stuck_shell" ZEL_MODULE)), "its entry point returned nothing");
}

TEST(PluginDescriptionVst2Test, AnEmptyShellContainsNothing) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/empty_shell" ZEL_MODULE)), "contains no effects or instruments");
}

TEST(PluginDescriptionVst2Test, AModuleThatIsNoPluginSaysWhy) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/no_entry" ZEL_MODULE)), "has no VST entry point");
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/null_entry" ZEL_MODULE)), "its entry point returned nothing");
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/wrong_magic" ZEL_MODULE)),
              "its entry point returned something that is no effect");
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/null_dispatcher" ZEL_MODULE)), "its effect answers no questions");
}

TEST(PluginDescriptionVst2Test, ExceptionsBecomeReasonsInPrintableText) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/throws_when_opened" ZEL_MODULE)),
              "threw an exception when it was opened: no licence?? found");
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/throws_a_number" ZEL_MODULE)),
              "threw an exception when it was asked about itself");
}

TEST(PluginDescriptionVst2Test, AnExceptionOnTheWayOutChangesNothing) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/throws_when_closed" ZEL_MODULE)), "described");
}

TEST(PluginDescriptionVst2Test, AVst3ModuleIsNoVst2Module) {
    const std::string library =
        TestPlugin("vst3/good/ZelGain3.vst3/Contents/" ZEL_BUNDLE_FOLDER "/ZelGain3" ZEL_BUNDLE_MODULE);
    EXPECT_EQ(ReasonOfVst(library), "has no VST entry point");
}

TEST(PluginDescriptionTest, FormatsThatHaveNoFilesHereSaySo) {
    const zelcore::ustring path(1, '/');
    EXPECT_THROW(DescribePlugin(PluginLocator(kTechnologyAU, path)), PluginLoadError);
    EXPECT_THROW(DescribePlugin(PluginLocator(kTechnologyBuiltIn, path)), PluginLoadError);
    EXPECT_THROW(DescribePlugin(PluginLocator()), PluginLoadError);
}
