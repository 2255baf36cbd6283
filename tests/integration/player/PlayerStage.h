#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "../render/Sound.h"
#include "ChainEffect.h"
#include "FileFeeder.h"
#include "SoundEngine.h"

namespace zeltests {

/// The path of one of our own test plug-ins, below the folder of its kind: "vst/good/zel_gain" ZEL_MODULE.
std::string TestPlugin(const std::string& path);
/// A filter of a module's first component.
tessaly::PlayedEffect::FilterPtr LoadFilter(const std::string& path);
/// The same as a chain takes it.
tessaly::ChainEffectPtr MakeEffect(const std::string& path);
/// The parameter of that name; fails the test and gives 0 when there is none.
int FindParameter(const zelaudiofilterhost::AudioFilter& filter, const std::string& name);

/// Sound in which every sample tells where it belongs: exact, different everywhere and never 0, up to 2^24 samples in
/// all.
Sound MakeCountingSound(std::size_t channelCount, std::size_t frames);
/// The frame that a sample of such a sound belongs to.
std::int64_t GetPlace(float sample, std::size_t channelCount);

/// Waits until the feeder has sound where it was sent.
void WaitForSound(const tessaly::FileFeeder& feeder);

/// What a feeder gives, block by block of 512 frames, until `goesOn`, asked with what came last, says no.
struct Fed {
    Sound sound;  ///< without what was not sound
    std::vector<tessaly::FileFeeder::Kind> kinds;
};
Fed Feed(tessaly::FileFeeder& feeder, std::size_t channelCount, bool loops,
         const std::function<bool(const Fed&)>& goesOn);
/// As many whole blocks as `frames` need; those that came late do not count: tests take them as fast as they can.
Fed FeedFrames(tessaly::FileFeeder& feeder, std::size_t channelCount, bool loops, std::size_t frames);

/// A chain of such filters for a track that is not the files' but has as many channels, started.
tessaly::PlayingChainPtr MakeChain(const tessaly::FileFeeder& feeder, const std::vector<std::string>& paths);

/// The next frames of an engine, asked for in pieces of `piece` frames.
Sound Pull(tessaly::SoundEngine& engine, std::size_t frames, int piece = 480);

/// How often a sound is not the other; also where one is longer. The first difference is told.
std::size_t CountDifferences(const Sound& sound, const Sound& other);

}  // namespace zeltests
