#include <csignal>
#include <filesystem>

#include <gmock/gmock.h>
#include <sndfile.h>

#include "RenderErrorFixture.h"
#include "support/WaitFor.h"

namespace zeltests {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string kGain = TestPlugin("vst/good/zel_gain" ZEL_MODULE);

constexpr int kIncomplete = 3;

}  // namespace

typedef RenderErrorFixture TessalyRenderErrorTest;

// Files to read

TEST_F(TessalyRenderErrorTest, WhatIsNoSoundIsNotRead) {
    EXPECT_THAT(FailWithInput(Path("missing.wav")), HasSubstr("missing.wav' is not there"));
    EXPECT_THAT(FailWithInput(mSounds.GetPath()), HasSubstr("is no file that can be read"));
    WriteFile(Path("text.wav"), "words, and many of them");
    EXPECT_THAT(FailWithInput(Path("text.wav")), HasSubstr("cannot be read as sound"));
    WriteFile(Path("empty.wav"), "");
    EXPECT_THAT(FailWithInput(Path("empty.wav")), HasSubstr("cannot be read as sound"));
}

TEST_F(TessalyRenderErrorTest, AFileWithoutFramesHoldsNoSound) {
    WriteSound(mInput, MakeTestSound(2, 0));
    EXPECT_THAT(Fail(kFailed, {"--effect", kPlain, "--tail", "1"}), HasSubstr("holds no sound"));
}

TEST_F(TessalyRenderErrorTest, MoreChannelsThanATrackHasAreNotRead) {
    WriteSound(mInput, MakeTestSound(65, 10));
    EXPECT_THAT(Fail(kFailed, {"--effect", kPlain}), HasSubstr("has 65 channels; there may be 1 to 64"));
    WriteSound(mInput, MakeTestSound(64, 10));
    const auto program = Start({"render", mInput, mOutput, "--effect", kPlain});
    EXPECT_EQ(program->Wait(), 0) << program->GetErrors();
}

TEST_F(TessalyRenderErrorTest, SampleRatesThatMakeNoSenseAreRefused) {
    for (const char* const rate : {"\x01\x00\x00\x00", "\xe7\x03\x00\x00", "\xff\xff\xff\x7f"}) {
        PutIntoHeader(24, std::string(rate, 4));
        EXPECT_THAT(Fail(kFailed, {"--effect", kPlain}), HasSubstr("sample rate"));
    }
}

TEST_F(TessalyRenderErrorTest, AFileWithoutChannelsIsRefused) {
    PutIntoHeader(22, std::string(2, '\0'));
    EXPECT_THAT(Fail(kFailed, {"--effect", kPlain}), HasSubstr("in.wav' "));
}

TEST_F(TessalyRenderErrorTest, AFileThatIsCutOffIsNotTakenForAWholeOne) {
    const std::vector<std::pair<std::string, int>> kinds = {
        {"cut.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16},    {"extensible.wav", SF_FORMAT_WAVEX | SF_FORMAT_PCM_24},
        {"large.wav", SF_FORMAT_RF64 | SF_FORMAT_PCM_16}, {"big.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16 | SF_ENDIAN_BIG},
        {"cut.w64", SF_FORMAT_W64 | SF_FORMAT_PCM_16},    {"cut.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16},
        {"float.aifc", SF_FORMAT_AIFF | SF_FORMAT_FLOAT}};
    for (const auto& [name, format] : kinds) {
        CutOff(name, format);
        EXPECT_THAT(FailWithInput(Path(name)), HasSubstr(name + "' is cut off"));
    }
}

TEST_F(TessalyRenderErrorTest, ALengthJustBelowThoseThatStandForAnUnknownOneIsTakenForWhatItSays) {
    WriteSound(mInput, MakeTestSound(2, 1000));
    std::string bytes = ReadFile(mInput);
    const std::size_t data = bytes.find("data");
    ASSERT_NE(data, std::string::npos);
    for (const std::string& length : {std::string("\xff\xff\xfe\x7f"), std::string("\x01\x00\x00\x80", 4)}) {
        WriteFile(mInput, bytes.replace(data + 4, 4, length));
        EXPECT_THAT(Fail(kFailed, {"--effect", kPlain}), HasSubstr("is cut off"));
    }
}

TEST_F(TessalyRenderErrorTest, ATrackOfOtherChannelsDoesNotFitTheFile) {
    EXPECT_THAT(Fail(kFailed, {"--effect", kPlain, "--track", "5.1"}), HasSubstr("has 2 channels, and the track 6"));
}

TEST_F(TessalyRenderErrorTest, ASideChainNeedsTheSameSampleRate) {
    WriteSound(Path("key.wav"), MakeTestSound(1, 100, 44100));
    EXPECT_THAT(Fail(kFailed, {"--effect", kPlain, "--side-chain", Path("key.wav")}),
                AllOf(HasSubstr("key.wav' has a sample rate of 44100 Hz"), HasSubstr("48000 Hz")));
    EXPECT_THAT(Fail(kFailed, {"--effect", kPlain, "--side-chain", Path("no.wav")}), HasSubstr("no.wav' is not there"));
}

// Files to write

TEST_F(TessalyRenderErrorTest, AnUnknownExtensionIsToldWithThoseThatAreKnown) {
    for (const std::string name : {"out.mp3", "out", ".wav"}) {
        EXPECT_THAT(FailWithOutput(kUsage, Path(name)),
                    AllOf(HasSubstr(name), HasSubstr(".wav, .flac, .aiff, .aif, .ogg")));
    }
}

TEST_F(TessalyRenderErrorTest, APlaceThatIsNoPlaceForAFileIsToldWithTheReason) {
    EXPECT_THAT(FailWithOutput(kFailed, Path("missing/out.wav")), HasSubstr("No such file or directory"));
    std::filesystem::create_directory(Path("folder.wav"));
    EXPECT_THAT(FailWithOutput(kFailed, Path("folder.wav")), HasSubstr("there is something that is no file"));
}

TEST_F(TessalyRenderErrorTest, AnInterruptedRenderLeavesWhatWasThere) {
    if (!Program::CanSignal()) GTEST_SKIP() << "there is no console here";
    for (const int signal : {SIGINT, SIGTERM}) {
        const std::string before = "what was there";
        WriteFile(mOutput, before);
        // Long enough not to end by itself meanwhile.
        const auto program = Start({"render", mInput, mOutput, "--effect", kPlain, "--tail", "3600", "--block", "1"});
        ASSERT_TRUE(WaitFor([&] { return ListFolder().size() > 2 || !program->IsRunning(); }));
        program->Signal(signal);
        EXPECT_EQ(program->Wait(), kIncomplete);
        EXPECT_THAT(program->GetErrors(), HasSubstr("was cancelled"));
        EXPECT_EQ(program->GetOutput(), "");
        EXPECT_TRUE(ReadFile(mOutput) == before);
        EXPECT_EQ(ListFolder(), (std::set<std::string>{"in.wav", "out.wav"}));
    }
}

// Effects

TEST_F(TessalyRenderErrorTest, APluginThatIsNotThereOrIsNoneIsTold) {
    EXPECT_THAT(Fail(kFailed, {"--effect", "Nobody"}), HasSubstr("there is no plug-in called 'Nobody'"));
    EXPECT_THAT(Fail(kFailed, {"--effect", TestPlugin("vst/bad/no_entry" ZEL_MODULE)}),
                HasSubstr("no_entry" ZEL_MODULE "' "));
}

TEST_F(TessalyRenderErrorTest, AnEffectThatRefusesIsNamed) {
    EXPECT_THAT(Fail(kFailed, {"--effect", TestPlugin("vst3/bad/RefusesStart3.vst3")}), HasSubstr("refused to start"));
    WriteSound(mInput, MakeTestSound(2, 100, 4000));
    EXPECT_THAT(Fail(kFailed, {"--effect", kPlain, "--effect", TestPlugin("vst3/good/ZelPlain3.vst3")}),
                HasSubstr("Zel Plain 3 refuses to process sound at 4000 Hz in blocks of 512 frames"));
}

TEST_F(TessalyRenderErrorTest, AParameterThatIsNotThereIsToldWithThoseThatAre) {
    EXPECT_THAT(
        Fail(kFailed, {"--effect", kGain, "--set", "Volume=1"}),
        AllOf(HasSubstr("Zel Gain has no parameter called 'Volume'"), HasSubstr("1  Gain"), HasSubstr("4  Mute")));
    EXPECT_THAT(Fail(kFailed, {"--effect", kGain, "--set", "5=1"}), HasSubstr("has 4 parameters, no parameter 5"));
    EXPECT_THAT(Fail(kFailed, {"--effect", kGain, "--set", "0=1"}), HasSubstr("no parameter 0"));
    EXPECT_THAT(Fail(kFailed, {"--effect", kPlain, "--set", "Gain=1"}), HasSubstr("nor any other"));
}

TEST_F(TessalyRenderErrorTest, AMapThatDoesNotFitIsToldWithWhatThereIs) {
    EXPECT_THAT(Fail(kFailed, {"--effect", kGain, "--map", "in=1"}), HasSubstr("has 2 input channels, the map 1"));
    EXPECT_THAT(Fail(kFailed, {"--effect", kGain, "--map", "out=1,2,-"}),
                HasSubstr("has 2 output channels, the map 3"));
    EXPECT_THAT(Fail(kFailed, {"--effect", kGain, "--map", "in=1,3"}),
                HasSubstr("the track has 2 channels, its side-chain 0"));
    WriteSound(Path("key.wav"), MakeTestSound(1, 100));
    EXPECT_THAT(Fail(kFailed, {"--effect", kGain, "--map", "out=1,3", "--side-chain", Path("key.wav")}),
                HasSubstr("nothing goes into a side-chain"));
}

TEST_F(TessalyRenderErrorTest, ArgumentsThatMakeNoSenseAreWrongUsage) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> wrong = {
        {{}, "say with --effect"},
        {{"third.wav", "--effect", kPlain}, "unexpected argument 'third.wav'"},
        {{"--map", "in=1", "--effect", kPlain}, "'--map' belongs behind the --effect"},
        {{"--set", "1=1", "--effect", kPlain}, "'--set' belongs behind the --effect"},
        {{"--effect", kPlain, "--map", "1,2"}, "'1,2' is no map"},
        {{"--effect", kPlain, "--map", "in="}, "'' is no list of channels"},
        {{"--effect", kPlain, "--map", "in=1,,2"}, "'1,,2' is no list of channels"},
        {{"--effect", kPlain, "--map", "in=0,1"}, "'0,1' is no list of channels"},
        {{"--effect", kPlain, "--set", "Gain"}, "'Gain' sets no parameter"},
        {{"--effect", kPlain, "--set", "=1"}, "'=1' sets no parameter"},
        {{"--effect", kPlain, "--set", "1=1.5"}, "sets no parameter"},
        {{"--effect", kPlain, "--set", "1=nan"}, "sets no parameter"},
        {{"--effect", kPlain, "--set", "1=0.5x"}, "sets no parameter"},
        {{"--effect", kPlain, "--block", "0"}, "a block has 1 to 65536 frames"},
        {{"--effect", kPlain, "--block", "65537"}, "a block has 1 to 65536 frames"},
        {{"--effect", kPlain, "--tail", "-1"}, "a tail has 0 to 3600 seconds"},
        {{"--effect", kPlain, "--tail", "inf"}, "a tail has 0 to 3600 seconds"},
        {{"--effect", kPlain, "--track", "6.66"}, "mono, stereo, 3.0, quad, 5.0, 5.1, 6.1, 7.1, 7.1.2, 7.1.4"},
        {{"--effect"}, "a value is missing after '--effect'"},
        {{"--effect", kPlain, "--generic"}, "unknown option '--generic'"}};
    for (const auto& [arguments, message] : wrong) EXPECT_THAT(Fail(kUsage, arguments), HasSubstr(message));
    const auto nothing = Start({"render"});
    EXPECT_EQ(nothing->Wait(), kUsage);
    EXPECT_THAT(nothing->GetErrors(), HasSubstr("say which file to render"));
}

}  // namespace zeltests
