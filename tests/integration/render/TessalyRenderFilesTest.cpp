#include <cmath>

#include <gtest/gtest.h>
#include <sndfile.h>

#include "AudioFileFormat.h"
#include "RenderFixture.h"
#include "SoundFormats.h"

namespace zeltests {

using tessaly::AudioFileFormat;

namespace {

const std::string kPlain = TestPlugin("vst/good/zel_plain" ZEL_MODULE);

double GetLargestDifference(const std::vector<float>& a, const std::vector<float>& b) {
    EXPECT_EQ(a.size(), b.size());
    double largest = 0.0;
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
        largest = std::max(largest, static_cast<double>(std::fabs(a[i] - b[i])));
    return largest;
}

}  // namespace

/// Which files are read and written, and where.
class TessalyRenderFilesTest : public RenderFixture {};

TEST_F(TessalyRenderFilesTest, EachKindOfFileIsWrittenByItsExtension) {
    const Sound input = MakeTestSound(2, 5000);
    WriteSound(mInput, input);
    const std::vector<std::pair<std::string, int>> kinds = {{"a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24},
                                                            {"a.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_24},
                                                            {"a.AIF", SF_FORMAT_AIFF | SF_FORMAT_PCM_24},
                                                            {"a.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS}};
    for (const auto& [name, format] : kinds) {
        if (!HasFormat(format)) continue;
        SCOPED_TRACE(name);
        const auto program = Start({"render", mInput, Path(name), "--block", "65536", "--effect", kPlain});
        ASSERT_EQ(program->Wait(), 0) << program->GetErrors();
        const Sound output = ReadSound(Path(name));
        EXPECT_EQ(output.format, format);
        EXPECT_EQ(output.sampleRate, 48000);
        ASSERT_EQ(output.channels.size(), 2u);
        const bool lossy = (format & SF_FORMAT_TYPEMASK) == SF_FORMAT_OGG;
        EXPECT_LT(GetLargestDifference(output[1], input[1]), lossy ? 0.1 : 3e-7);
    }
}

TEST_F(TessalyRenderFilesTest, EachKindOfFileIsRead) {
    const Sound sound = MakeTestSound(2, 5000);
    const std::vector<std::pair<std::string, int>> kinds = {
        {"a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16}, {"a.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16},
        {"a.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS},   {"a.mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III},
        {"a.caf", SF_FORMAT_CAF | SF_FORMAT_PCM_24},   {"a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8},
        {"b.wav", SF_FORMAT_RF64 | SF_FORMAT_FLOAT},   {"c.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24 | SF_ENDIAN_BIG},
        {"a.w64", SF_FORMAT_W64 | SF_FORMAT_PCM_24}};
    for (const auto& [name, format] : kinds) {
        if (!HasFormat(format)) continue;
        SCOPED_TRACE(name);
        WriteSound(Path(name), sound, format);
        const Sound input = ReadSound(Path(name));
        const auto program = Start({"render", Path(name), mOutput, "--effect", kPlain});
        ASSERT_EQ(program->Wait(), 0) << program->GetErrors();
        EXPECT_EQ(ReadSound(mOutput).channels, input.channels);
    }
}

TEST_F(TessalyRenderFilesTest, AFileOfUnknownLengthFromAPipeIsRead) {
    const Sound input = MakeTestSound(1, 1000);
    WriteSound(mInput, input);
    std::string bytes = ReadFile(mInput);
    const std::size_t data = bytes.find("data");
    ASSERT_NE(data, std::string::npos);
    for (const std::size_t at : {std::size_t(4), data + 4}) bytes.replace(at, 4, 4, '\xff');
    WriteFile(mInput, bytes);
    Render({"--effect", kPlain});
    EXPECT_EQ(ReadSound(mOutput)[0], input[0]);
    for (const std::string& length : {std::string("\x00\x00\xff\x7f", 4), std::string("\x00\xf0\xff\x7f", 4),
                                      std::string("\xff\xff\xff\x7f", 4), std::string("\x00\x00\x00\x80", 4)}) {
        bytes.replace(data + 4, 4, length);
        WriteFile(mInput, bytes);
        Render({"--effect", kPlain});
        EXPECT_EQ(ReadSound(mOutput)[0], input[0]) << static_cast<int>(length[1]);
    }
}

TEST_F(TessalyRenderFilesTest, SoundOfAnyLengthIsThereToItsLastFrame) {
    for (const std::size_t frames : {1u, 63u, 4095u, 4097u, 65535u, 65537u, 300001u}) {
        WriteSound(mInput, MakeTestSound(2, frames));
        for (const char* const name : {"a.wav", "a.flac", "a.aiff", "a.ogg"}) {
            if (!HasFormat(AudioFileFormat::FindForPath(name)->GetCode(frames))) continue;
            const auto program = Start({"render", mInput, Path(name), "--effect", kPlain});
            ASSERT_EQ(program->Wait(), 0) << program->GetErrors();
            EXPECT_EQ(ReadSound(Path(name)).GetFrameCount(), frames) << name;
        }
    }
}

}  // namespace zeltests
