#include "Sound.h"

#include <cmath>

#include <gtest/gtest.h>
#include <sndfile.h>

namespace zeltests {

Sound MakeSound(std::size_t channelCount, std::size_t frames,
                const std::function<float(std::size_t, std::size_t)>& sample, int sampleRate) {
    Sound sound;
    sound.sampleRate = sampleRate;
    sound.channels.assign(channelCount, std::vector<float>(frames));
    for (std::size_t channel = 0; channel < channelCount; ++channel) {
        for (std::size_t i = 0; i < frames; ++i) sound.channels[channel][i] = sample(channel, i);
    }
    return sound;
}

Sound MakeTestSound(std::size_t channelCount, std::size_t frames, int sampleRate) {
    return MakeSound(
        channelCount, frames,
        [](std::size_t channel, std::size_t i) {
            return static_cast<float>(0.45 * std::sin(0.05 * static_cast<double>(i * (channel + 1) + channel)));
        },
        sampleRate);
}

Sound MakeLevel(std::size_t channelCount, std::size_t frames, float level) {
    return MakeSound(channelCount, frames, [level](std::size_t, std::size_t) { return level; });
}

void WriteSound(const std::string& path, const Sound& sound, int format) {
    SF_INFO info = {};
    info.channels = static_cast<int>(sound.channels.size());
    info.samplerate = sound.sampleRate;
    info.format = format != 0 ? format : SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* const file = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << path << ": " << sf_strerror(nullptr);
    std::vector<float> samples;
    for (std::size_t i = 0; i < sound.GetFrameCount(); ++i) {
        for (const std::vector<float>& channel : sound.channels) samples.push_back(channel[i]);
    }
    const auto frames = static_cast<sf_count_t>(sound.GetFrameCount());
    EXPECT_EQ(sf_writef_float(file, samples.data(), frames), frames) << path;
    EXPECT_EQ(sf_close(file), 0) << path;
}

void WriteLongLevel(const std::string& path, std::size_t frames) {
    SF_INFO info = {};
    info.channels = 1;
    info.samplerate = 48000;
    info.format = SF_FORMAT_FLAC | SF_FORMAT_PCM_16;
    SNDFILE* const file = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << path << ": " << sf_strerror(nullptr);
    const std::vector<float> second(48000, 0.25f);
    for (std::size_t written = 0; written < frames; written += second.size())
        ASSERT_EQ(sf_writef_float(file, second.data(), 48000), 48000) << path;
    EXPECT_EQ(sf_close(file), 0) << path;
}

std::size_t ReadFrameCount(const std::string& path) {
    SF_INFO info = {};
    SNDFILE* const file = sf_open(path.c_str(), SFM_READ, &info);
    EXPECT_NE(file, nullptr) << path << ": " << sf_strerror(nullptr);
    sf_close(file);
    return static_cast<std::size_t>(info.frames);
}

Sound ReadSound(const std::string& path) {
    Sound sound;
    SF_INFO info = {};
    SNDFILE* const file = sf_open(path.c_str(), SFM_READ, &info);
    EXPECT_NE(file, nullptr) << path << ": " << sf_strerror(nullptr);
    if (file == nullptr) return sound;
    const auto channels = static_cast<std::size_t>(info.channels);
    std::vector<float> samples(static_cast<std::size_t>(info.frames) * channels);
    EXPECT_EQ(sf_readf_float(file, samples.data(), info.frames), info.frames) << path;
    sf_close(file);
    sound = MakeSound(
        channels, static_cast<std::size_t>(info.frames),
        [&](std::size_t channel, std::size_t i) { return samples[i * channels + channel]; }, info.samplerate);
    sound.format = info.format;
    return sound;
}

}  // namespace zeltests
