#include <csignal>
#include <filesystem>

#include <gmock/gmock.h>
#include <sndfile.h>

#include "PeakMemory.h"
#include "RenderFixture.h"
#include "support/WaitFor.h"

namespace zeltests {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string kPlain = TestPlugin("vst/good/zel_plain.so");
const std::string kGain = TestPlugin("vst/good/zel_gain.so");

constexpr int kFailed = 1;
constexpr int kUsage = 2;
constexpr int kIncomplete = 3;

}  // namespace

/// What goes wrong, and that nothing is written then; Fail checks that each time.
class TessalyRenderErrorTest : public RenderFixture {
protected:
    TessalyRenderErrorTest() { WriteSound(mInput, MakeTestSound(2, 1000)); }

    std::string FailWithInput(const std::string& input) { return Fail(kFailed, input, mOutput, {"--effect", kPlain}); }
    std::string FailWithOutput(int exitCode, const std::string& output) {
        return Fail(exitCode, mInput, output, {"--effect", kPlain});
    }
    /// Sound as different from one sample to the next as it can be: no format makes it much smaller.
    static Sound MakeNoise(std::size_t frames) {
        return MakeSound(2, frames, [](std::size_t channel, std::size_t i) {
            return static_cast<float>((i * i * 7919 + channel) % 1009) / 2018.0f;
        });
    }
    /// Renders the input and expects a failure where no file may have more than `limit` times half a kilobyte, which
    /// stands for a full disk.
    std::string FailOnFullDisk(int limit, const std::string& output, const std::vector<std::string>& more = {}) {
        const std::string before = "what was there";
        WriteFile(output, before);
        const std::set<std::string> filesBefore = ListFolder();
        const std::string command = "trap '' XFSZ; ulimit -f " + std::to_string(limit) + "; exec \"$0\" \"$@\"";
        std::vector<std::string> arguments = {"/bin/sh", "-c",   command, std::string(ZEL_BIN_DIR) + "/tessaly",
                                              "render",  mInput, output,  "--effect",
                                              kPlain};
        arguments.insert(arguments.end(), more.begin(), more.end());
        Program program(mOther.GetPath(), arguments, GetEnvironment());
        EXPECT_EQ(program.Wait(), kFailed);
        EXPECT_EQ(program.GetOutput(), "");
        EXPECT_TRUE(ReadFile(output) == before);
        EXPECT_EQ(ListFolder(), filesBefore);
        return program.GetErrors();
    }
    /// Writes a sound file and cuts it in half.
    void CutOff(const std::string& name, int format) {
        WriteSound(Path(name), MakeNoise(50000), format);
        const std::string bytes = ReadFile(Path(name));
        WriteFile(Path(name), bytes.substr(0, bytes.size() / 2));
    }
    /// Changes a number in the header of the input.
    void PutIntoHeader(std::size_t at, const std::string& bytes) {
        WriteSound(mInput, MakeTestSound(2, 1000), SF_FORMAT_WAV | SF_FORMAT_PCM_16);
        WriteFile(mInput, ReadFile(mInput).replace(at, bytes.size(), bytes));
    }
};

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

TEST_F(TessalyRenderErrorTest, AnErrorInTheMiddleLeavesNothingOfTheNewFile) {
    CutOff("cut.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    EXPECT_THAT(FailWithInput(Path("cut.flac")), AllOf(HasSubstr("cut.flac' is "), Not(HasSubstr("sound"))));
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

TEST_F(TessalyRenderErrorTest, TheFilesThatAreReadAreNotWrittenByAnyPath) {
    std::filesystem::create_symlink(mInput, Path("link.wav"));
    std::filesystem::create_hard_link(mInput, Path("hard.wav"));
    const std::string before = ReadFile(mInput);
    for (const std::string& path :
         {mInput, Path("link.wav"), Path("hard.wav"),
          mSounds.GetPath() + "/../" + std::filesystem::path(mSounds.GetPath()).filename().string() + "/./in.wav"}) {
        EXPECT_THAT(FailWithOutput(kFailed, path), HasSubstr("is one of the files to read"));
        EXPECT_TRUE(ReadFile(mInput) == before);
    }
    WriteSound(Path("key.wav"), MakeTestSound(1, 100));
    const std::string key = ReadFile(Path("key.wav"));
    EXPECT_THAT(Fail(kFailed, mInput, Path("key.wav"), {"--effect", kPlain, "--side-chain", Path("key.wav")}),
                HasSubstr("is one of the files to read"));
    EXPECT_TRUE(ReadFile(Path("key.wav")) == key);
}

TEST_F(TessalyRenderErrorTest, APlaceThatIsNoPlaceForAFileIsToldWithTheReason) {
    EXPECT_THAT(FailWithOutput(kFailed, Path("missing/out.wav")), HasSubstr("No such file or directory"));
    std::filesystem::create_directory(Path("folder.wav"));
    EXPECT_THAT(FailWithOutput(kFailed, Path("folder.wav")), HasSubstr("there is something that is no file"));
}

TEST_F(TessalyRenderErrorTest, AFormatThatCannotHoldTheSoundIsToldWithOneThatCan) {
    WriteSound(mInput, MakeTestSound(12, 100));
    EXPECT_THAT(FailWithOutput(kFailed, Path("out.flac")), AllOf(HasSubstr("12 channels"), HasSubstr(".wav has")));
}

TEST_F(TessalyRenderErrorTest, AnEncoderThatRefusesIsToldWithItsOwnReason) {
    WriteSound(mInput, MakeTestSound(2, 100, 700000));
    EXPECT_THAT(FailWithOutput(kFailed, Path("out.flac")),
                AllOf(HasSubstr("does not support this sample rate"), Not(HasSubstr("2 channels"))));
}

TEST_F(TessalyRenderErrorTest, WhatIsTooLongForAnAiffFileIsRefusedBeforeItIsRendered) {
    WriteSound(mInput, MakeTestSound(8, 100, 192000));
    // Sixteen gigabytes; the limit keeps them from being written should they not be refused.
    for (const char* const name : {"out.aiff", "out.aif"}) {
        EXPECT_THAT(FailOnFullDisk(100, Path(name), {"--tail", "3600"}),
                    AllOf(HasSubstr("less than 4 GiB"), HasSubstr(".wav may have more")));
    }
}

TEST_F(TessalyRenderErrorTest, ALinkThatLeadsToItselfIsNoPlaceForAFile) {
    std::filesystem::create_symlink("b.wav", Path("a.wav"));
    std::filesystem::create_symlink("a.wav", Path("b.wav"));
    EXPECT_THAT(FailWithOutput(kFailed, Path("a.wav")), HasSubstr("Too many levels of symbolic links"));
    EXPECT_TRUE(std::filesystem::is_symlink(Path("a.wav")));
}

TEST_F(TessalyRenderErrorTest, ADiskThatIsFullLeavesWhatWasThere) {
    WriteSound(mInput, MakeNoise(50000));
    for (const char* const name : {"out.wav", "out.flac", "out.aiff", "out.ogg"})
        EXPECT_THAT(FailOnFullDisk(8, Path(name)), HasSubstr(std::string(name) + "' cannot be written")) << name;
}

TEST_F(TessalyRenderErrorTest, ADiskThatGetsFullWithTheLastOfTheSoundLeavesWhatWasThere) {
    // Less than one packet: all of it is written when the file is closed.
    WriteSound(mInput, MakeNoise(3000));
    for (const int limit : {7, 10}) {
        for (const char* const name : {"out.wav", "out.flac", "out.aiff", "out.ogg"}) {
            SCOPED_TRACE(testing::Message() << name << " " << limit);
            EXPECT_THAT(FailOnFullDisk(limit, Path(name)), HasSubstr(std::string(name) + "' cannot be written"));
        }
    }
}

TEST_F(TessalyRenderErrorTest, AnInterruptedRenderLeavesWhatWasThere) {
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
    EXPECT_THAT(Fail(kFailed, {"--effect", TestPlugin("vst/bad/no_entry.so")}), HasSubstr("no_entry.so' "));
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

TEST_F(TessalyRenderErrorTest, ControlCharactersOfNamesDoNotReachTheTerminal) {
    EXPECT_THAT(FailWithInput(Path("\x1b[31m.wav")), AllOf(HasSubstr("?[31m.wav"), Not(HasSubstr("\x1b"))));
    EXPECT_THAT(FailWithInput(Path("\u009b31m\u0080\u009f\u00a0\u00fc.wav")), HasSubstr("/?31m??\u00a0\u00fc.wav"));
}

TEST_F(TessalyRenderErrorTest, BytesThatAreNoTextDoNotReachTheTerminal) {
    EXPECT_THAT(FailWithInput(Path("a\x9b"
                                   "31m\xff\xfc.wav")),
                HasSubstr("/a?31m??.wav"));
    EXPECT_THAT(FailWithInput(Path("\xe2\x82.wav")), HasSubstr("/?.wav"));
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

// Memory

TEST_F(TessalyRenderErrorTest, ALongFileNeedsNoMoreMemoryThanAShortOne) {
    constexpr std::size_t kRate = 48000;
    const auto measure = [this](std::size_t seconds, const std::string& name) {
        const std::string input = Path(name + ".flac");
        WriteLongLevel(input, seconds * kRate);
        const std::string output = Path(name + "-out.flac");
        const long peak = RunAndMeasurePeak(
            {std::string(ZEL_BIN_DIR) + "/tessaly", "render", input, output, "--effect", kPlain}, GetEnvironment());
        EXPECT_EQ(ReadFrameCount(output), seconds * kRate);
        return peak;
    };
    const long ofShort = measure(10, "short");
    const long ofLong = measure(600, "long");
    ASSERT_GT(ofShort, 1000);
    // Of the long one all samples at once would be 115 MB.
    EXPECT_LT(ofLong, ofShort + 20000) << ofShort;
}

}  // namespace zeltests
