#include <filesystem>

#include <gmock/gmock.h>
#include <sndfile.h>

#include "PeakMemory.h"
#include "RenderErrorFixture.h"

namespace zeltests {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// With what other platforms have no equal of, or no encoder for.
class TessalyRenderSystemErrorTest : public RenderErrorFixture {
protected:
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
};

TEST_F(TessalyRenderSystemErrorTest, AnErrorInTheMiddleLeavesNothingOfTheNewFile) {
    CutOff("cut.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    EXPECT_THAT(FailWithInput(Path("cut.flac")), AllOf(HasSubstr("cut.flac' is "), Not(HasSubstr("sound"))));
}

TEST_F(TessalyRenderSystemErrorTest, TheFilesThatAreReadAreNotWrittenByAnyPath) {
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

TEST_F(TessalyRenderSystemErrorTest, AFormatThatCannotHoldTheSoundIsToldWithOneThatCan) {
    WriteSound(mInput, MakeTestSound(12, 100));
    EXPECT_THAT(FailWithOutput(kFailed, Path("out.flac")), AllOf(HasSubstr("12 channels"), HasSubstr(".wav has")));
}

TEST_F(TessalyRenderSystemErrorTest, AnEncoderThatRefusesIsToldWithItsOwnReason) {
    WriteSound(mInput, MakeTestSound(2, 100, 700000));
    EXPECT_THAT(FailWithOutput(kFailed, Path("out.flac")),
                AllOf(HasSubstr("does not support this sample rate"), Not(HasSubstr("2 channels"))));
}

TEST_F(TessalyRenderSystemErrorTest, WhatIsTooLongForAnAiffFileIsRefusedBeforeItIsRendered) {
    WriteSound(mInput, MakeTestSound(8, 100, 192000));
    // Sixteen gigabytes; the limit keeps them from being written should they not be refused.
    for (const char* const name : {"out.aiff", "out.aif"}) {
        EXPECT_THAT(FailOnFullDisk(100, Path(name), {"--tail", "3600"}),
                    AllOf(HasSubstr("less than 4 GiB"), HasSubstr(".wav may have more")));
    }
}

TEST_F(TessalyRenderSystemErrorTest, ALinkThatLeadsToItselfIsNoPlaceForAFile) {
    std::filesystem::create_symlink("b.wav", Path("a.wav"));
    std::filesystem::create_symlink("a.wav", Path("b.wav"));
    EXPECT_THAT(FailWithOutput(kFailed, Path("a.wav")), HasSubstr("Too many levels of symbolic links"));
    EXPECT_TRUE(std::filesystem::is_symlink(Path("a.wav")));
}

TEST_F(TessalyRenderSystemErrorTest, ADiskThatIsFullLeavesWhatWasThere) {
    WriteSound(mInput, MakeNoise(50000));
    for (const char* const name : {"out.wav", "out.flac", "out.aiff", "out.ogg"})
        EXPECT_THAT(FailOnFullDisk(8, Path(name)), HasSubstr(std::string(name) + "' cannot be written")) << name;
}

TEST_F(TessalyRenderSystemErrorTest, ADiskThatGetsFullWithTheLastOfTheSoundLeavesWhatWasThere) {
    // Less than one packet: all of it is written when the file is closed.
    WriteSound(mInput, MakeNoise(3000));
    for (const int limit : {7, 10}) {
        for (const char* const name : {"out.wav", "out.flac", "out.aiff", "out.ogg"}) {
            SCOPED_TRACE(testing::Message() << name << " " << limit);
            EXPECT_THAT(FailOnFullDisk(limit, Path(name)), HasSubstr(std::string(name) + "' cannot be written"));
        }
    }
}

TEST_F(TessalyRenderSystemErrorTest, ControlCharactersOfNamesDoNotReachTheTerminal) {
    EXPECT_THAT(FailWithInput(Path("\x1b[31m.wav")), AllOf(HasSubstr("?[31m.wav"), Not(HasSubstr("\x1b"))));
    EXPECT_THAT(FailWithInput(Path("\u009b31m\u0080\u009f\u00a0\u00fc.wav")), HasSubstr("/?31m??\u00a0\u00fc.wav"));
}

TEST_F(TessalyRenderSystemErrorTest, BytesThatAreNoTextDoNotReachTheTerminal) {
    EXPECT_THAT(FailWithInput(Path("a\x9b"
                                   "31m\xff\xfc.wav")),
                HasSubstr("/a?31m??.wav"));
    EXPECT_THAT(FailWithInput(Path("\xe2\x82.wav")), HasSubstr("/?.wav"));
}

TEST_F(TessalyRenderSystemErrorTest, ALongFileNeedsNoMoreMemoryThanAShortOne) {
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
