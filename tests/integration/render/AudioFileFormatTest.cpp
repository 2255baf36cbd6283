#include "AudioFileFormat.h"

#include <gtest/gtest.h>
#include <sndfile.h>

namespace zeltests {

using tessaly::AudioFileFormat;

TEST(AudioFileFormatTest, AWavFileOfMoreThanFourGigabytesHasAHeaderForThat) {
    const AudioFileFormat* const wav = AudioFileFormat::FindForPath("a/b.wav");
    ASSERT_NE(wav, nullptr);
    EXPECT_EQ(wav->GetCode(1000000000u), SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    EXPECT_EQ(wav->GetCode(std::uint64_t(1) << 30), SF_FORMAT_RF64 | SF_FORMAT_FLOAT);
}

TEST(AudioFileFormatTest, AnAiffFileOfMoreThanFourGigabytesDoesNotExist) {
    for (const char* const path : {"a.aiff", "a.aif"}) {
        const AudioFileFormat* const aiff = AudioFileFormat::FindForPath(path);
        ASSERT_NE(aiff, nullptr);
        // Of three bytes each.
        EXPECT_EQ(aiff->GetCode(1400000000u), SF_FORMAT_AIFF | SF_FORMAT_PCM_24);
        EXPECT_EQ(aiff->GetCode(1500000000u), AudioFileFormat::kNoCode);
        EXPECT_EQ(aiff->GetCode(std::uint64_t(1) << 63), AudioFileFormat::kNoCode);
    }
}

TEST(AudioFileFormatTest, LengthIsNoMatterToFormatsThatDoNotWriteItDownInBytes) {
    for (const char* const path : {"a.flac", "a.ogg"}) {
        const AudioFileFormat* const format = AudioFileFormat::FindForPath(path);
        ASSERT_NE(format, nullptr);
        EXPECT_NE(format->GetCode(1), AudioFileFormat::kNoCode);
        EXPECT_EQ(format->GetCode(std::uint64_t(1) << 40), format->GetCode(1));
    }
}

TEST(AudioFileFormatTest, EachExtensionOfTheListIsKnownInCapitalsToo) {
    std::string list = AudioFileFormat::ListExtensions() + ", ";
    int count = 0;
    for (std::size_t end = list.find(", "); end != std::string::npos; end = list.find(", ")) {
        std::string extension = list.substr(0, end);
        EXPECT_NE(AudioFileFormat::FindForPath("a" + extension), nullptr) << extension;
        for (char& c : extension) c = static_cast<char>(std::toupper(c));
        EXPECT_NE(AudioFileFormat::FindForPath("a" + extension), nullptr) << extension;
        list.erase(0, end + 2);
        ++count;
    }
    EXPECT_EQ(count, 5);
}

}  // namespace zeltests
