#pragma once

#include <functional>
#include <string>
#include <vector>

namespace zeltests {

/// Sound in memory: as many samples in each channel.
struct Sound {
    int sampleRate = 48000;
    int format = 0;  ///< what libsndfile calls the format of the file that it was read from
    std::vector<std::vector<float>> channels;

    std::size_t GetFrameCount() const { return channels.empty() ? 0 : channels[0].size(); }
    const std::vector<float>& operator[](std::size_t channel) const { return channels[channel]; }
};

/// Sound whose samples are what `sample` says for channel and frame.
Sound MakeSound(std::size_t channelCount, std::size_t frames,
                const std::function<float(std::size_t, std::size_t)>& sample, int sampleRate = 48000);
/// Sound in which no two samples near each other are alike and all are below 0.5.
Sound MakeTestSound(std::size_t channelCount, std::size_t frames, int sampleRate = 48000);
/// Sound of one level.
Sound MakeLevel(std::size_t channelCount, std::size_t frames, float level);

/// Writes a file of 32-bit WAV, or of another format of libsndfile; fails the test when it cannot.
void WriteSound(const std::string& path, const Sound& sound, int format = 0);
/// Writes mono sound of one level, of any length, as FLAC without having all of it in memory: a program that is started
/// afterwards is counted with the most memory that this one ever had.
void WriteLongLevel(const std::string& path, std::size_t frames);
std::size_t ReadFrameCount(const std::string& path);
/// Fails the test and answers no channels for a file that cannot be read.
Sound ReadSound(const std::string& path);

}  // namespace zeltests
