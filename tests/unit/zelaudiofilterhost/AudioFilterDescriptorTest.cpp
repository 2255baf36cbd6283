#include <zelaudiofilterhost/AudioFilterDescriptor.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelaudiofilterhost/PluginDescription.h>
#include <zelcore/Utf.h>

#include "DescribeForTest.h"
#include "Vst2FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::HasSubstr;

namespace {

typedef boost::intrusive_ptr<AudioFilterDescriptor> Descriptor;

ustring U(const std::string& text) { return zelcore::utility::UTF8to16(text); }

/// A descriptor as one that was kept from an earlier scan, with the component changed by `change`.
template <typename Change>
Descriptor Outdated(const Descriptor& descriptor, Change change) {
    PluginComponentInfo component = descriptor->GetComponent();
    change(component);
    return Descriptor(new AudioFilterDescriptor(descriptor->GetLocator(), component));
}

std::string ReasonOfCreate(const Descriptor& descriptor) {
    try {
        descriptor->CreateFilter();
        return "created";
    } catch (const PluginLoadError& error) {
        return error.what();
    }
}

constexpr char kGone[] = "does not contain this component any more";

}  // namespace

TEST(AudioFilterDescriptorTest, ReadModuleGivesWhatTheModuleSaysOfItself) {
    const std::vector<Descriptor> gain = ReadVst("good/zel_gain");
    ASSERT_EQ(gain.size(), 1u);
    EXPECT_EQ(gain[0]->GetComponent(), DescribeVst(TestPlugin("vst/good/zel_gain" ZEL_MODULE)).components.front());
    EXPECT_EQ(gain[0]->GetLocator(), PluginLocator(kTechnologyVST, U(TestPlugin("vst/good/zel_gain" ZEL_MODULE))));
}

TEST(AudioFilterDescriptorTest, ReadModuleNamesEachComponentOfAShellInItsLocator) {
    const std::vector<Descriptor> shell = ReadVst("good/zel_shell");
    ASSERT_EQ(shell.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(Text(shell[i]->GetLocator().GetSubcomponent()), "5A53683" + std::to_string(i + 1));
        EXPECT_EQ(shell[i]->GetLocator().GetSubcomponent(), shell[i]->GetComponent().subcomponent);
    }
}

TEST(AudioFilterDescriptorTest, ReadModuleThrowsForWhatIsNoPlugin) {
    EXPECT_THROW(ReadVst("bad/no_entry"), PluginLoadError);
    EXPECT_THROW(AudioFilterDescriptor::ReadModule(PluginLocator()), PluginLoadError);
}

TEST(AudioFilterDescriptorTest, ASubcomponentInTheLocatorIsReplacedByTheComponents) {
    const Descriptor gain = ReadVst("good/zel_gain")[0];
    const PluginLocator other(kTechnologyVST, gain->GetLocator().GetPath(), U("00000001"));
    const Descriptor descriptor(new AudioFilterDescriptor(other, gain->GetComponent()));
    EXPECT_EQ(descriptor->GetLocator(), gain->GetLocator());
    EXPECT_EQ(ReasonOfCreate(descriptor), "created");
}

TEST(AudioFilterDescriptorTest, AFilterOutlivesItsDescriptorAndKeepsItsModule) {
    std::vector<Descriptor> descriptors = ReadVst("good/zel_gain");
    const auto filter = descriptors[0]->CreateFilter();
    descriptors.clear();
    EXPECT_EQ(Text(filter->GetComponentID()), "VST-5A476169");
    EXPECT_EQ(Text(filter->GetName()), "Zel Gain");
    EXPECT_EQ(Text(filter->GetParameterInfo(0)->GetName()), "Gain");
}

TEST(AudioFilterDescriptorTest, FormatsThatHaveNoFilesHereSaySo) {
    const PluginComponentInfo component;
    for (const TechnologyType technology : {kTechnologyNone, kTechnologyBuiltIn}) {
        const Descriptor descriptor(new AudioFilterDescriptor(PluginLocator(technology, U("/x")), component));
        EXPECT_EQ(ReasonOfCreate(descriptor), "is of no plug-in format that is known here");
    }
    const Descriptor unit(new AudioFilterDescriptor(PluginLocator(kTechnologyAU, U("/x")), component));
    EXPECT_EQ(ReasonOfCreate(unit), "Audio Units work on macOS only");
}

TEST(AudioFilterDescriptorTest, AFileOfTheOtherFormatOrNoneIsRefused) {
    const PluginComponentInfo component = ReadVst("good/zel_gain")[0]->GetComponent();
    const auto create = [&component](const std::string& path) {
        return ReasonOfCreate(new AudioFilterDescriptor(PluginLocator(kTechnologyVST, U(path)), component));
    };
    EXPECT_EQ(create(TestPlugin("vst3/good/ZelGain3.vst3/Contents/" ZEL_BUNDLE_FOLDER "/ZelGain3" ZEL_BUNDLE_MODULE)),
              "has no VST entry point");
    EXPECT_EQ(create("/nowhere/x" ZEL_MODULE), "there is no such file");
    EXPECT_EQ(create(""), "there is no such file");
}

TEST(AudioFilterDescriptorTest, AnEffectThatIsAnotherOneNowIsNotMade) {
    const Descriptor gain = ReadVst("good/zel_gain")[0];
    EXPECT_EQ(ReasonOfCreate(Outdated(gain, [](PluginComponentInfo& info) { ++info.uniqueId; })), kGone);
    EXPECT_EQ(ReasonOfCreate(Outdated(gain, [](PluginComponentInfo& info) { info.subcomponent = U("00000001"); })),
              kGone);
}

TEST(AudioFilterDescriptorTest, AComponentThatItsShellHasNoMoreIsNotMade) {
    const Descriptor stereo = ReadVst("good/zel_shell")[1];
    for (const char* const text : {"5A536834", "00000000", "5A53683", "5A5368322", "5a536832", "no id at", " "}) {
        EXPECT_EQ(ReasonOfCreate(Outdated(stereo, [&](PluginComponentInfo& info) { info.subcomponent = U(text); })),
                  kGone)
            << text;
    }
    EXPECT_EQ(ReasonOfCreate(Outdated(stereo,
                                      [](PluginComponentInfo& info) {
                                          info.subcomponent.clear();
                                          info.uniqueId = 0;
                                      })),
              kGone);
}

TEST(AudioFilterDescriptorTest, TheOnlyComponentOfAShellIsMadeByItsListedId) {
    const std::vector<Descriptor> shell = ReadVst("good/zel_single_shell");
    ASSERT_EQ(shell.size(), 1u);
    EXPECT_EQ(Text(shell[0]->GetComponent().subcomponent), "");
    const auto filter = shell[0]->CreateFilter();
    EXPECT_EQ(filter->GetParameterCount(), 1);
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kInput), 2);
    EXPECT_EQ(ReasonOfCreate(Outdated(shell[0], [](PluginComponentInfo& info) { ++info.uniqueId; })), kGone);
}

TEST(AudioFilterDescriptorTest, AnExceptionWhileItIsMadeBecomesTheReason) {
    const Descriptor gain = ReadVst("good/zel_gain")[0];
    const PluginLocator locator(kTechnologyVST, U(TestPlugin("vst/bad/throws_when_opened" ZEL_MODULE)));
    EXPECT_EQ(ReasonOfCreate(new AudioFilterDescriptor(locator, gain->GetComponent())),
              "threw an exception when it was opened: no licence?? found");
}
