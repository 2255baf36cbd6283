#include "FileFeeder.h"

#include <filesystem>
#include <random>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>

#include "../render/SoundFormats.h"
#include "AudioFileError.h"
#include "PlayerStage.h"
#include "support/ThrowAwayFolder.h"
#include "support/WaitFor.h"

using namespace tessaly;
using testing::Each;
using testing::HasSubstr;

namespace zeltests {

namespace {

constexpr std::size_t kRate = 48000;

class FileFeederTest : public testing::Test {
protected:
    std::string Write(const std::string& name, const Sound& sound, int format = 0) {
        WriteSound(mFolder.Path(name), sound, format);
        return mFolder.Path(name);
    }

    ThrowAwayFolder mFolder;
};

/// What a looped sound is from a frame on.
Sound Repeat(const Sound& sound, std::size_t first, std::size_t frames) {
    return MakeSound(sound.channels.size(), frames, [&](std::size_t channel, std::size_t i) {
        return sound[channel][(first + i) % sound.GetFrameCount()];
    });
}

bool HasReached(const Fed& fed, FileFeeder::Kind kind) { return fed.kinds.back() == kind; }

}  // namespace

TEST_F(FileFeederTest, TheSoundComesAsItIsAndThenEnds) {
    const Sound sound = MakeCountingSound(2, 5 * kRate + 77);
    FileFeeder feeder(Write("in.wav", sound), "", 0);
    WaitForSound(feeder);
    const Fed fed = Feed(feeder, 2, false, [](const Fed& now) { return !HasReached(now, FileFeeder::kEnd); });
    EXPECT_EQ(CountDifferences(fed.sound, sound), 0u);
    EXPECT_EQ(feeder.GetPosition(), static_cast<std::int64_t>(sound.GetFrameCount()));
    EXPECT_EQ(feeder.GetState(), FileFeeder::kEnd);
    EXPECT_EQ(feeder.GetTrouble(), "");
}

TEST_F(FileFeederTest, ALoopGoesOnWithoutAGap) {
    const Sound sound = MakeCountingSound(2, kRate + 123);
    FileFeeder feeder(Write("in.wav", sound), "", 1000);
    WaitForSound(feeder);
    const Fed fed = FeedFrames(feeder, 2, true, 2 * kRate);
    EXPECT_THAT(fed.kinds, Each(FileFeeder::kSound));
    EXPECT_EQ(CountDifferences(fed.sound, Repeat(sound, 1000, fed.sound.GetFrameCount())), 0u);
}

TEST_F(FileFeederTest, ASoundOfOneFrameLoops) {
    // The smallest file of a kind whose decoder works in blocks, where there is one.
    const int flac = SF_FORMAT_FLAC | SF_FORMAT_PCM_16;
    FileFeeder feeder(Write("in", MakeLevel(1, 1, 0.5f), HasFormat(flac) ? flac : 0), "", 0);
    WaitForSound(feeder);
    const Fed fed = FeedFrames(feeder, 1, true, kRate);
    EXPECT_THAT(fed.kinds, Each(FileFeeder::kSound));
    EXPECT_THAT(fed.sound[0], Each(0.5f));
}

TEST_F(FileFeederTest, AShorterSideChainGoesOnAsSilenceAndStartsAgainWithTheTrack) {
    const std::size_t frames = kRate;
    const std::string path = Write("in.wav", MakeLevel(1, frames, 0.25f));
    FileFeeder feeder(path, Write("side.wav", MakeLevel(2, 1000, 0.5f)), 0);
    WaitForSound(feeder);
    const Fed fed = FeedFrames(feeder, 3, true, frames + 2000);
    EXPECT_THAT(fed.sound[0], Each(0.25f));
    for (std::size_t i = 0; i < fed.sound.GetFrameCount(); ++i) {
        const float expected = i % frames < 1000 ? 0.5f : 0.0f;
        ASSERT_EQ(fed.sound[1][i], expected) << i;
        ASSERT_EQ(fed.sound[2][i], expected) << i;
    }
}

TEST_F(FileFeederTest, ASideChainOfAnotherSampleRateIsRefused) {
    const std::string path = Write("in.wav", MakeLevel(1, 100, 0.25f));
    Sound side = MakeLevel(1, 100, 0.25f);
    side.sampleRate = 44100;
    const std::string sidePath = Write("side.wav", side);
    EXPECT_THROW(FileFeeder(path, sidePath, 0), AudioFileError);
}

TEST_F(FileFeederTest, LoopingCanBeSwitchedOffUpToTheEndAndOnBehindIt) {
    const Sound sound = MakeCountingSound(1, 4 * 512 + 100);
    FileFeeder feeder(Write("in.wav", sound), "", 0);
    WaitForSound(feeder);
    FeedFrames(feeder, 1, true, 4 * 512);
    const Fed rest = FeedFrames(feeder, 1, false, 512);
    EXPECT_EQ(rest.sound.GetFrameCount(), 100u);
    EXPECT_TRUE(HasReached(rest, FileFeeder::kEnd));
    EXPECT_EQ(FeedFrames(feeder, 1, false, 512).sound.GetFrameCount(), 0u);
    const Fed again = FeedFrames(feeder, 1, true, 512);
    EXPECT_TRUE(HasReached(again, FileFeeder::kSound));
    EXPECT_EQ(CountDifferences(again.sound, Repeat(sound, 0, 512)), 0u);
}

TEST_F(FileFeederTest, ThePositionIsWhereItWasSentAtOnce) {
    FileFeeder feeder(Write("in.wav", MakeCountingSound(1, 4 * kRate)), "", 500);
    EXPECT_EQ(feeder.GetPosition(), 500);
    WaitForSound(feeder);
    FeedFrames(feeder, 1, false, 1024);
    EXPECT_EQ(feeder.GetPosition(), 1524);
    feeder.Seek(100000);
    EXPECT_EQ(feeder.GetPosition(), 100000);
    EXPECT_EQ(feeder.GetState(), FileFeeder::kNotYet);
    WaitForSound(feeder);
    FeedFrames(feeder, 1, false, 512);
    EXPECT_EQ(feeder.GetPosition(), 100512);
    feeder.Seek(std::int64_t(1) << 60);
    EXPECT_EQ(feeder.GetPosition(), static_cast<std::int64_t>(4 * kRate));
    feeder.Seek(-1);
    EXPECT_EQ(feeder.GetPosition(), 0);
}

TEST_F(FileFeederTest, BeforeAndAfterASeekThereIsNoGapAndNothingOfBeforeComesBack) {
    const Sound sound = MakeCountingSound(2, 60 * kRate);
    FileFeeder feeder(Write("in.wav", sound), "", 0);
    WaitForSound(feeder);
    constexpr std::int64_t kTarget = 40 * kRate + 321;
    std::int64_t before = -1;
    std::size_t jumps = 0;
    const auto listen = [&](std::size_t frames) {
        std::size_t blocks = 0;
        const Fed fed = Feed(feeder, 2, false, [&](const Fed&) { return ++blocks * 512 < frames; });
        ASSERT_THAT(fed.kinds, Each(FileFeeder::kSound));
        for (const float sample : fed.sound[0]) {
            const std::int64_t place = GetPlace(sample, 2);
            if (place != before + 1) {
                ++jumps;
                ASSERT_EQ(place, kTarget);
            }
            before = place;
        }
    };
    listen(10000);
    feeder.Seek(kTarget);
    listen(2000);
    WaitForSound(feeder);
    listen(10000);
    EXPECT_EQ(jumps, 1u);
    EXPECT_EQ(before + 1, feeder.GetPosition());
}

TEST_F(FileFeederTest, ThousandsOfSeeksLoseNothingAndEndAtTheLast) {
    constexpr std::int64_t kFrames = 60 * kRate;
    FileFeeder feeder(Write("in.wav", MakeCountingSound(1, kFrames)), "", 0);
    WaitForSound(feeder);
    std::mt19937 random(1);
    std::set<std::int64_t> targets = {0};
    std::int64_t before = -1;
    for (int round = 0; round < 300; ++round) {
        for (int i = 0; i < 10; ++i) {
            const std::int64_t target = random() % (kFrames / 2);
            targets.insert(target);
            feeder.Seek(target);
            const Fed fed = Feed(feeder, 1, false, [](const Fed&) { return false; });
            ASSERT_THAT(fed.kinds, Each(FileFeeder::kSound));
            const std::int64_t place = GetPlace(fed.sound[0].front(), 1);
            ASSERT_TRUE(place == before + 1 || targets.contains(place)) << place << " after " << before;
            before = GetPlace(fed.sound[0].back(), 1);
            ASSERT_EQ(before, place + 511);
        }
        WaitForSound(feeder);
    }
    const std::int64_t last = feeder.GetPosition();
    EXPECT_EQ(GetPlace(FeedFrames(feeder, 1, false, 512).sound[0][0], 1), last);
}

TEST_F(FileFeederTest, AFileThatIsCutOffWhileItPlaysEndsWithTheReason) {
    const Sound sound = MakeCountingSound(1, 30 * kRate);
    const std::string path = Write("in.wav", sound);
    FileFeeder feeder(path, "", 0);
    WaitForSound(feeder);
    std::filesystem::resize_file(path, 10 * kRate * sizeof(float));
    // As fast as it is played here, blocks that come late are no wonder.
    const Fed fed = Feed(feeder, 1, false, [](const Fed& now) {
        return !HasReached(now, FileFeeder::kFailed) && !HasReached(now, FileFeeder::kEnd);
    });
    EXPECT_TRUE(HasReached(fed, FileFeeder::kFailed));
    EXPECT_GT(fed.sound.GetFrameCount(), 9 * kRate);
    EXPECT_EQ(CountDifferences(fed.sound, Repeat(sound, 0, fed.sound.GetFrameCount())), 0u);
    EXPECT_THAT(feeder.GetTrouble(), HasSubstr("in.wav"));
    EXPECT_THAT(feeder.GetTrouble(), HasSubstr("cut off"));
}

TEST_F(FileFeederTest, ASeekBackFromWhereItCannotBeReadPlaysOn) {
    const std::string path = Write("in.wav", MakeCountingSound(1, 30 * kRate));
    FileFeeder feeder(path, "", 0);
    WaitForSound(feeder);
    std::filesystem::resize_file(path, 10 * kRate * sizeof(float));
    feeder.Seek(20 * kRate);
    WaitForSound(feeder);
    EXPECT_TRUE(HasReached(FeedFrames(feeder, 1, false, 512), FileFeeder::kFailed));
    EXPECT_NE(feeder.GetTrouble(), "");
    feeder.Seek(2 * kRate);
    WaitForSound(feeder);
    const Fed fed = FeedFrames(feeder, 1, false, 512);
    EXPECT_TRUE(HasReached(fed, FileFeeder::kSound));
    EXPECT_EQ(GetPlace(fed.sound[0][0], 1), static_cast<std::int64_t>(2 * kRate));
    EXPECT_EQ(feeder.GetTrouble(), "");
}

TEST_F(FileFeederTest, ItIsSecondsAhead) {
    FileFeeder feeder(Write("in.wav", MakeCountingSound(2, 20 * kRate)), "", 0);
    WaitForSound(feeder);
    // What is taken at once was there already; the reading thread is woken by nobody.
    std::size_t mostAtOnce = 0;
    EXPECT_TRUE(WaitFor([&] {
        const Fed fed = Feed(feeder, 2, true, [](const Fed& now) { return !HasReached(now, FileFeeder::kLate); });
        mostAtOnce = std::max(mostAtOnce, fed.sound.GetFrameCount());
        return mostAtOnce >= 2 * kRate;
    }));
}

}  // namespace zeltests
