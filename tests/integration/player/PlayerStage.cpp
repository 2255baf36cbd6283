#include "PlayerStage.h"

#include <algorithm>

#include <gtest/gtest.h>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelcore/Utf.h>

#include "SideChainBus.h"
#include "support/WaitFor.h"

using namespace tessaly;

namespace zeltests {

namespace {

constexpr int kBlock = 512;

/// Pointers to room for `frames` frames behind what `sound` has.
std::vector<float*> Append(Sound& sound, std::size_t channelCount, std::size_t frames) {
    sound.channels.resize(channelCount);
    std::vector<float*> pointers;
    for (std::vector<float>& channel : sound.channels) {
        channel.resize(channel.size() + frames);
        pointers.push_back(channel.data() + channel.size() - frames);
    }
    return pointers;
}

boost::intrusive_ptr<zelaudiofilterhost::AudioFilterDescriptor> ReadFirst(const std::string& path) {
    using namespace zelaudiofilterhost;
    const auto technology = path.ends_with(".vst3") ? kTechnologyVST3 : kTechnologyVST;
    return AudioFilterDescriptor::ReadModule({technology, zelcore::utility::UTF8to16(path)}).at(0);
}

}  // namespace

std::string TestPlugin(const std::string& path) { return std::string(ZEL_TESTPLUGINS_DIR) + "/" + path; }

PlayedEffect::FilterPtr LoadFilter(const std::string& path) { return ReadFirst(path)->CreateFilter(); }

ChainEffectPtr MakeEffect(const std::string& path) { return std::make_shared<ChainEffect>(*ReadFirst(path)); }

PlayingChainPtr MakeChain(const FileFeeder& feeder, const std::vector<std::string>& paths) {
    const TrackReader& track = feeder.GetTrack();
    std::vector<PlayedEffectPtr> effects;
    for (const std::string& path : paths) {
        effects.push_back(std::make_shared<PlayedEffect>(LoadFilter(path)));
        effects.back()->GetFilter()->SetTargetFormat(
            zelmediatypes::MakeChannelLayoutForCount(track.GetSoundChannelCount()),
            SideChainBus::Make(zelmediatypes::MakeChannelLayoutForCount(track.GetSideChainChannelCount())));
        EXPECT_TRUE(effects.back()->Start(track.GetSampleRate(), SoundEngine::kBlockFrames)) << path;
    }
    return std::make_shared<PlayingChain>(effects, track.GetSoundChannelCount(), track.GetSideChainChannelCount(),
                                          SoundEngine::kBlockFrames);
}

int FindParameter(const zelaudiofilterhost::AudioFilter& filter, const std::string& name) {
    const zelcore::ustring wanted = zelcore::utility::UTF8to16(name);
    for (int i = 0; i < filter.GetParameterCount(); ++i) {
        if (filter.GetParameterInfo(i)->GetName() == wanted) return i;
    }
    ADD_FAILURE() << "no parameter is called " << name;
    return 0;
}

Sound MakeCountingSound(std::size_t channelCount, std::size_t frames) {
    return MakeSound(channelCount, frames, [channelCount](std::size_t channel, std::size_t i) {
        return static_cast<float>(i * channelCount + channel + 1) / static_cast<float>(1 << 24);
    });
}

std::int64_t GetPlace(float sample, std::size_t channelCount) {
    const auto number = static_cast<std::int64_t>(sample * static_cast<float>(1 << 24));
    return number == 0 ? -1 : (number - 1) / static_cast<std::int64_t>(channelCount);
}

void WaitForSound(const FileFeeder& feeder) {
    ASSERT_TRUE(WaitFor([&] { return feeder.IsReady(); }));
}

Fed Feed(FileFeeder& feeder, std::size_t channelCount, bool loops, const std::function<bool(const Fed&)>& goesOn) {
    Fed fed;
    do {
        const std::vector<float*> room = Append(fed.sound, channelCount, kBlock);
        const FileFeeder::Reading reading = feeder.Read(room.data(), kBlock, loops);
        for (std::vector<float>& channel : fed.sound.channels)
            channel.resize(channel.size() - kBlock + static_cast<std::size_t>(reading.frames));
        fed.kinds.push_back(reading.kind);
    } while (goesOn(fed));
    return fed;
}

Fed FeedFrames(FileFeeder& feeder, std::size_t channelCount, bool loops, std::size_t frames) {
    std::size_t late = 0;
    Fed fed = Feed(feeder, channelCount, loops, [&](const Fed& now) {
        if (now.kinds.back() == FileFeeder::kLate) ++late;
        return (now.kinds.size() - late) * kBlock < frames;
    });
    std::erase(fed.kinds, FileFeeder::kLate);
    return fed;
}

Sound Pull(SoundEngine& engine, std::size_t frames, int piece) {
    Sound sound;
    for (std::size_t done = 0; done < frames;) {
        const std::size_t count = std::min(frames - done, static_cast<std::size_t>(piece));
        engine.Render(Append(sound, engine.GetChannelCount(), count).data(), static_cast<int>(count));
        done += count;
    }
    return sound;
}

std::size_t CountDifferences(const Sound& sound, const Sound& other) {
    if (sound.channels.size() != other.channels.size() || sound.GetFrameCount() != other.GetFrameCount()) {
        ADD_FAILURE() << sound.channels.size() << " channels of " << sound.GetFrameCount() << " frames, and "
                      << other.channels.size() << " of " << other.GetFrameCount();
        return 1;
    }
    std::size_t count = 0;
    for (std::size_t channel = 0; channel < sound.channels.size(); ++channel) {
        for (std::size_t i = 0; i < sound.GetFrameCount(); ++i) {
            if (sound[channel][i] == other[channel][i]) continue;
            if (count++ > 0) continue;
            ADD_FAILURE() << "channel " << channel << ", frame " << i << ": " << sound[channel][i] << " and "
                          << other[channel][i];
        }
    }
    return count;
}

}  // namespace zeltests
