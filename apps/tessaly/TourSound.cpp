#include "TourSound.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "AudioFileFormat.h"
#include "AudioFileWriter.h"
#include "ChannelBuffers.h"

namespace tessaly {

namespace {

constexpr int kFrames = TourSound::kSampleRate * TourSound::kSeconds;
constexpr int kChannels = 2;
constexpr double kChordSeconds = 2.0;
constexpr double kBeatSeconds = 0.5;

/// In Hz; four chords of three notes.
constexpr std::array<std::array<double, 3>, 4> kChords{
    {{{220.00, 261.63, 329.63}}, {{174.61, 220.00, 261.63}}, {{196.00, 246.94, 293.66}}, {{164.81, 207.65, 246.94}}}};

double Sine(double frequency, double time) { return std::sin(2.0 * std::numbers::pi * frequency * time); }

/// A note with a few overtones, the higher the softer.
double Note(double frequency, double time) {
    double sample = 0.0;
    for (int overtone = 1; overtone <= 5; ++overtone)
        sample += Sine(frequency * overtone, time) * std::exp(-1.5 * overtone * time) / overtone;
    return sample;
}

double Chord(double time, int channel) {
    const auto index = static_cast<std::size_t>(time / kChordSeconds) % kChords.size();
    const double within = std::fmod(time, kChordSeconds);
    const double rise = std::min(within * 200.0, 1.0);
    const auto& notes = kChords[index];
    // The outer notes lean to one side each.
    const double left = channel == 0 ? 0.7 : 0.4;
    return 0.25 * rise *
           (left * Note(notes[0], within) + 0.55 * Note(notes[1], within) + (1.1 - left) * Note(notes[2], within));
}

double Beat(double time, int) {
    const double within = std::fmod(time, kBeatSeconds);
    return 0.8 * Sine(50.0 + 90.0 * std::exp(-30.0 * within), within) * std::exp(-12.0 * within);
}

void WriteTestTone(const std::string& path, double (*sound)(double, int)) {
    ChannelBuffers buffers(kChannels, kFrames);
    for (int channel = 0; channel < kChannels; ++channel) {
        for (int frame = 0; frame < kFrames; ++frame) {
            buffers.GetChannels()[channel][frame] =
                static_cast<float>(sound(static_cast<double>(frame) / TourSound::kSampleRate, channel));
        }
    }
    AudioFileWriter file(path, *AudioFileFormat::FindForPath(path), kChannels, TourSound::kSampleRate, kFrames);
    file.Write(buffers.GetChannels(), kFrames);
    file.Commit();
}

}  // namespace

void TourSound::WriteChords(const std::string& path) { WriteTestTone(path, Chord); }

void TourSound::WriteBeat(const std::string& path) { WriteTestTone(path, Beat); }

}  // namespace tessaly
