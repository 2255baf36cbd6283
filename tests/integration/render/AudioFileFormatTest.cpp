#include "AudioFileFormat.h"

#include <gtest/gtest.h>
#include <sndfile.h>

namespace zeltests {

using tessaly::AudioFileFormat;

TEST(AudioFileFormatTest, AWavFileOfMoreThanFourGigabytesHasAHeaderForThat) {
    const AudioFileFormat* const wav = AudioFileFormat::FindForPath("a/b.wav");
    ASSERT_NE(wav, nullptr);
    EXPECT_EQ(wav->GetCode(4000000000u), SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    EXPECT_EQ(wav->GetCode(std::uint64_t(1) << 32), SF_FORMAT_RF64 | SF_FORMAT_FLOAT);
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
