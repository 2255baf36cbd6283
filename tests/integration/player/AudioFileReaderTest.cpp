#include "AudioFileReader.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sndfile.h>

#include "../render/Sound.h"
#include "../render/SoundFormats.h"
#include "AudioFileError.h"
#include "support/ThrowAwayFolder.h"

using tessaly::AudioFileError;
using tessaly::AudioFileReader;

namespace zeltests {

TEST(AudioFileReaderTest, ASeekIsToTheFrameAlsoWhereItWasReadBefore) {
    const ThrowAwayFolder folder;
    const Sound sound = MakeTestSound(2, 50000);
    for (const int format :
         {SF_FORMAT_WAV | SF_FORMAT_FLOAT, SF_FORMAT_WAV | SF_FORMAT_PCM_16, SF_FORMAT_AIFF | SF_FORMAT_PCM_24,
          SF_FORMAT_FLAC | SF_FORMAT_PCM_24, SF_FORMAT_OGG | SF_FORMAT_VORBIS}) {
        if (!HasFormat(format)) continue;
        const std::string path = folder.Path("in");
        WriteSound(path, sound, format);
        const Sound whole = ReadSound(path);
        AudioFileReader reader(path);
        std::vector<float> left(100), right(100);
        float* const channels[] = {left.data(), right.data()};
        for (const std::size_t place : {40000, 39999, 0, 1, 49900, 20000}) {
            reader.Seek(static_cast<std::int64_t>(place));
            ASSERT_EQ(reader.Read(channels, 100), 100);
            EXPECT_EQ(reader.GetPosition(), static_cast<std::int64_t>(place + 100));
            for (std::size_t i = 0; i < 100; ++i)
                ASSERT_NEAR(right[i], whole[1][place + i], 1e-6) << std::hex << format << std::dec << ", " << place + i;
        }
    }
}

TEST(AudioFileReaderTest, ASeekStaysInTheFile) {
    const ThrowAwayFolder folder;
    WriteSound(folder.Path("in.wav"), MakeLevel(1, 100, 0.5f));
    AudioFileReader reader(folder.Path("in.wav"));
    float samples[10];
    float* const channels[] = {samples};
    reader.Seek(1000);
    EXPECT_EQ(reader.GetPosition(), 100);
    EXPECT_EQ(reader.Read(channels, 10), 0);
    reader.Seek(-1);
    EXPECT_EQ(reader.GetPosition(), 0);
    EXPECT_EQ(reader.Read(channels, 10), 10);
}

TEST(AudioFileReaderTest, WhatWasCutOffMeanwhileIsAnErrorAndWhatIsBeforeItCanStillBeRead) {
    const ThrowAwayFolder folder;
    WriteSound(folder.Path("in.wav"), MakeLevel(1, 50000, 0.5f));
    AudioFileReader reader(folder.Path("in.wav"));
    std::filesystem::resize_file(folder.Path("in.wav"), 100000);
    float samples[10] = {};
    float* const channels[] = {samples};
    reader.Seek(40000);
    EXPECT_THROW(reader.Read(channels, 10), AudioFileError);
    reader.Seek(100);
    EXPECT_EQ(reader.Read(channels, 10), 10);
    EXPECT_EQ(samples[9], 0.5f);
}

}  // namespace zeltests
