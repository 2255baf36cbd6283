#include "Player.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QAudioDevice>
#include <QCoreApplication>
#include <QMediaDevices>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelcore/Utf.h>

#include "DeviceStage.h"
#include "PlayerStage.h"
#include "support/WaitFor.h"

using namespace tessaly;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace zeltests {

namespace {

constexpr std::size_t kRate = 48000;

class PlayerTest : public DeviceStage {
protected:
    void Insert(const std::string& plugin) {
        using namespace zelaudiofilterhost;
        const PluginLocator locator = {kTechnologyVST, zelcore::utility::UTF8to16(TestPlugin(plugin))};
        mSession.Insert(mSession.GetEffects().size(), *AudioFilterDescriptor::ReadModule(locator).at(0));
    }

    bool RunUntilPosition(std::size_t position) {
        return RunUntil([&] { return mPlayer.GetPosition() >= static_cast<std::int64_t>(position); });
    }
};

/// A channel of a recording, without the silence before and behind.
std::vector<float> Trim(const std::string& bytes, std::size_t channel = 0) {
    std::vector<float> samples(bytes.size() / sizeof(float));
    std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(float));
    std::vector<float> one;
    for (std::size_t i = channel; i < samples.size(); i += 2) one.push_back(samples[i]);
    const auto isSound = [](float sample) { return sample != 0.0f; };
    const auto first = std::find_if(one.begin(), one.end(), isSound);
    const auto last = std::find_if(one.rbegin(), one.rend(), isSound).base();
    return first < last ? std::vector<float>(first, last) : std::vector<float>();
}

/// Whether it is all of `sound` but perhaps its first moment: the server mixes ahead, and its recording does not have
/// what it mixed anew when the sound began.
bool IsEndOf(const std::vector<float>& heard, const std::vector<float>& sound) {
    return heard.size() <= sound.size() && heard.size() + kRate / 10 > sound.size() &&
           std::equal(heard.rbegin(), heard.rend(), sound.rbegin());
}

}  // namespace

TEST_F(PlayerTest, WithoutADeviceItStaysStoppedAndSaysSoOnce) {
    ASSERT_TRUE(QMediaDevices::defaultAudioOutput().isNull());
    mSession.SetSound(Write("in.wav", MakeTestSound(2, kRate)));
    mPlayer.Play();
    mPlayer.Play();
    EXPECT_FALSE(mPlayer.IsPlaying());
    EXPECT_EQ(mStateChanges, 0);
    EXPECT_THAT(mTroubles, ElementsAre("There is no sound device to play on."));
}

TEST_F(PlayerTest, WithoutASoundNothingHappens) {
    ConnectDevice();
    mPlayer.Play();
    mPlayer.Seek(10);
    EXPECT_FALSE(mPlayer.IsPlaying());
    EXPECT_EQ(mPlayer.GetPosition(), 0);
    EXPECT_EQ(mPlayer.GetLength(), 0);
    EXPECT_THAT(mPlayer.TakePeaks(), IsEmpty());
    EXPECT_THAT(mTroubles, IsEmpty());
}

TEST_F(PlayerTest, WhatTheDevicePlaysIsTheFileSampleBySample) {
    ConnectDevice();
    const Sound sound = MakeCountingSound(2, 4 * kRate);
    mSession.SetSound(Write("in.wav", sound));
    EXPECT_EQ(mPlayer.GetLength(), static_cast<std::int64_t>(sound.GetFrameCount()));
    EXPECT_EQ(mPlayer.GetSampleRate(), static_cast<int>(kRate));
    const std::unique_ptr<Program> recorder = GetSoundServer().Record("ears");
    ASSERT_TRUE(RunUntil([&] { return !recorder->GetOutput().empty(); }));
    mPlayer.Play();
    EXPECT_TRUE(mPlayer.IsPlaying());
    ASSERT_TRUE(RunUntil([&] { return !mPlayer.IsPlaying(); }));
    EXPECT_EQ(mStateChanges, 2);
    EXPECT_THAT(mTroubles, IsEmpty());
    EXPECT_EQ(mPlayer.GetPosition(), mPlayer.GetLength());
    EXPECT_EQ(mPlayer.GetCounts().lost, 0u);
    const auto isOver = [&] {
        const std::vector<float> heard = Trim(recorder->GetOutput());
        return !heard.empty() && heard.back() == sound[0].back();
    };
    EXPECT_TRUE(RunUntil(isOver));
    for (const std::size_t channel : {0, 1}) EXPECT_TRUE(IsEndOf(Trim(recorder->GetOutput(), channel), sound[channel]));
}

TEST_F(PlayerTest, MonoIsHeardOnBothSides) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeCountingSound(1, kRate)));
    const std::unique_ptr<Program> recorder = GetSoundServer().Record("ears");
    ASSERT_TRUE(RunUntil([&] { return !recorder->GetOutput().empty(); }));
    mPlayer.Play();
    ASSERT_TRUE(RunUntil([&] { return !mPlayer.IsPlaying(); }));
    ASSERT_TRUE(RunUntil([&] { return Trim(recorder->GetOutput(), 1).size() > kRate / 2; }));
    EXPECT_GT(Trim(recorder->GetOutput(), 0).size(), kRate / 2);
}

TEST_F(PlayerTest, SoundsOfOtherRatesAndManyChannelsArePlayed) {
    ConnectDevice();
    for (const std::size_t channels : {1, 3, 6, 8}) {
        for (const int rate : {8000, 44100, 96000, 192000}) {
            mSession.SetSound(Write("in.wav", MakeTestSound(channels, 20000, rate)));
            mPlayer.Play();
            EXPECT_TRUE(mPlayer.IsPlaying()) << channels << " channels, " << rate << " Hz";
            EXPECT_TRUE(RunUntil([&] { return mPlayer.GetPosition() > 2000; }));
            EXPECT_EQ(mPlayer.TakePeaks().size(), channels);
            mPlayer.Stop();
        }
    }
    EXPECT_THAT(mTroubles, IsEmpty());
}

TEST_F(PlayerTest, ABusyMainThreadLosesNothing) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, 20 * kRate)));
    mPlayer.Play();
    // The main loop does not turn meanwhile.
    ASSERT_TRUE(WaitFor([&] { return mPlayer.GetPosition() > std::int64_t(5 * kRate); }));
    EXPECT_EQ(mPlayer.GetCounts().lost, 0u);
    EXPECT_GT(mPlayer.GetCounts().blocks, 5 * kRate / 512 - 2);
    EXPECT_TRUE(mPlayer.IsPlaying());
    EXPECT_NEAR(mPlayer.TakePeaks().at(0), 0.45f, 0.01f);
}

TEST_F(PlayerTest, ItStopsWhereItIsAndGoesOnFromThere) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, 20 * kRate)));
    mPlayer.Seek(5 * kRate);
    EXPECT_EQ(mPlayer.GetPosition(), static_cast<std::int64_t>(5 * kRate));
    mPlayer.Play();
    ASSERT_TRUE(RunUntilPosition(6 * kRate));
    mPlayer.Stop();
    const std::int64_t position = mPlayer.GetPosition();
    EXPECT_GE(position, static_cast<std::int64_t>(6 * kRate));
    mPlayer.Play();
    EXPECT_EQ(mPlayer.GetPosition(), position);
    ASSERT_TRUE(RunUntilPosition(static_cast<std::size_t>(position) + kRate / 2));
    mPlayer.Seek(15 * kRate);
    ASSERT_TRUE(RunUntilPosition(15 * kRate + kRate / 2));
    EXPECT_EQ(mPlayer.GetCounts().lost, 0u);
}

TEST_F(PlayerTest, ItIsStoppedWhileTheDeviceTakesItsFirstSound) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, kRate)));
    // The device's buffer is empty then, and it asks for more and more. That takes less than a wait between two looks.
    for (int i = 0; i < 150; ++i) {
        mPlayer.Play();
        ASSERT_TRUE(mPlayer.IsPlaying());
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (mPlayer.GetCounts().blocks == 0 && std::chrono::steady_clock::now() < deadline) {
        }
        EXPECT_GT(mPlayer.GetCounts().blocks, 0u);
        mPlayer.Stop();
        EXPECT_FALSE(mPlayer.IsPlaying());
    }
    EXPECT_THAT(mTroubles, IsEmpty());
}

TEST_F(PlayerTest, AtTheEndItBeginsAgain) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, 3 * kRate)));
    mPlayer.Seek(3 * kRate);
    mPlayer.Play();
    ASSERT_TRUE(RunUntilPosition(100));
    EXPECT_LT(mPlayer.GetPosition(), static_cast<std::int64_t>(2 * kRate));
}

TEST_F(PlayerTest, ItLoopsWhileTheSessionDoes) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, kRate / 2)));
    mSession.SetLooping(true);
    mPlayer.Play();
    ASSERT_TRUE(RunUntil([&] { return mPlayer.GetCounts().blocks > 2 * kRate / 512; }));
    EXPECT_TRUE(mPlayer.IsPlaying());
    mSession.SetLooping(false);
    EXPECT_TRUE(RunUntil([&] { return !mPlayer.IsPlaying(); }));
    EXPECT_EQ(mPlayer.GetPosition(), mPlayer.GetLength());
}

TEST_F(PlayerTest, EffectsComeAndGoWhileItPlays) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, 60 * kRate)));
    mPlayer.Play();
    for (int i = 0; i < 5; ++i) {
        Insert("vst/good/zel_gain" ZEL_MODULE);
        const ChainEffectPtr effect = mSession.GetEffects().back();
        EXPECT_TRUE(effect->GetFilter()->IsProcessing());
        effect->GetFilter()->SetParameterValue(FindParameter(*effect->GetFilter(), "Mute"), 1.0f);
        EXPECT_TRUE(RunUntil([&] { return mPlayer.TakePeaks() == std::vector<float>(2, 0.0f); }));
        mSession.SetBypassed(0, true);
        EXPECT_TRUE(RunUntil([&] { return mPlayer.TakePeaks().at(0) > 0.4f; }));
        mSession.SetBypassed(0, false);
        mSession.Remove(0);
        EXPECT_TRUE(RunUntil([&] { return mPlayer.TakePeaks().at(0) > 0.4f; }));
        EXPECT_TRUE(RunUntil([&] { return !effect->GetFilter()->IsProcessing(); }));
        mSession.GetUndoStack().undo();
        EXPECT_TRUE(effect->GetFilter()->IsProcessing());
        mSession.GetUndoStack().redo();
    }
    EXPECT_EQ(mPlayer.GetCounts().lost, 0u);
    EXPECT_THAT(mTroubles, IsEmpty());
}

TEST_F(PlayerTest, AnEffectThatRefusesIsNamedAndPassedBy) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, 20 * kRate)));
    Insert("vst/bad/throws_when_started" ZEL_MODULE);
    mPlayer.Play();
    EXPECT_TRUE(mPlayer.IsPlaying());
    EXPECT_THAT(mTroubles, ElementsAre(HasSubstr("throws_when_started refuses")));
    EXPECT_TRUE(RunUntil([&] { return mPlayer.TakePeaks().at(0) > 0.4f; }));
}

TEST_F(PlayerTest, ASideChainComesWhileItPlaysAndItGoesOn) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, 60 * kRate)));
    Insert("vst/good/zel_sidechain" ZEL_MODULE);
    mPlayer.Play();
    ASSERT_TRUE(RunUntilPosition(kRate / 2));
    mSession.SetSideChain(Write("side.wav", MakeLevel(2, 60 * kRate, 1.0f)));
    EXPECT_TRUE(mPlayer.IsPlaying());
    EXPECT_GE(mPlayer.GetPosition(), static_cast<std::int64_t>(kRate / 2));
    EXPECT_TRUE(mSession.GetEffects()[0]->GetFilter()->IsProcessing());
    ASSERT_TRUE(RunUntilPosition(kRate));
    EXPECT_THAT(mTroubles, IsEmpty());
}

TEST_F(PlayerTest, AnotherSoundStopsItAtTheBeginning) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, 60 * kRate)));
    Insert("vst/good/zel_gain" ZEL_MODULE);
    mPlayer.Play();
    ASSERT_TRUE(RunUntilPosition(kRate / 2));
    mSession.SetSound(Write("other.wav", MakeTestSound(1, kRate)));
    EXPECT_FALSE(mPlayer.IsPlaying());
    EXPECT_EQ(mPlayer.GetPosition(), 0);
    EXPECT_EQ(mPlayer.GetLength(), static_cast<std::int64_t>(kRate));
    EXPECT_EQ(mStateChanges, 2);
    EXPECT_EQ(mPlayer.TakePeaks().size(), 1u);
}

TEST_F(PlayerTest, ASoundThatIsCutOffWhileItPlaysEndsWithTheReason) {
    ConnectDevice();
    const std::string path = Write("in.wav", MakeTestSound(2, 60 * kRate));
    mSession.SetSound(path);
    mPlayer.Play();
    std::filesystem::resize_file(path, 5 * kRate * 2 * sizeof(float));
    mPlayer.Seek(4 * kRate);
    ASSERT_TRUE(RunUntil([&] { return !mPlayer.IsPlaying(); }));
    EXPECT_THAT(mTroubles, ElementsAre(testing::AllOf(HasSubstr("cannot be read any further"), HasSubstr("in.wav"))));
}

TEST_F(PlayerTest, ASoundThatIsGoneIsTold) {
    ConnectDevice();
    const std::string path = Write("in.wav", MakeTestSound(2, kRate));
    mSession.SetSound(path);
    std::filesystem::remove(path);
    mPlayer.Play();
    EXPECT_FALSE(mPlayer.IsPlaying());
    EXPECT_THAT(mTroubles, ElementsAre(HasSubstr("in.wav")));
}

TEST_F(PlayerTest, ASoundThatBecameAnotherIsNotPlayed) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, kRate)));
    Write("in.wav", MakeTestSound(6, kRate));
    mPlayer.Play();
    EXPECT_FALSE(mPlayer.IsPlaying());
    EXPECT_THAT(mTroubles, ElementsAre(HasSubstr("open it again")));
}

TEST_F(PlayerTest, ADeviceThatGoesAwayStopsIt) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, 60 * kRate)));
    Insert("vst/good/zel_gain" ZEL_MODULE);
    mPlayer.Play();
    ASSERT_TRUE(RunUntilPosition(kRate / 2));
    DisconnectDevice();
    ASSERT_TRUE(RunUntil([&] { return !mPlayer.IsPlaying(); }));
    EXPECT_THAT(mTroubles, ElementsAre(HasSubstr("device is gone")));
    EXPECT_FALSE(mSession.GetEffects()[0]->GetFilter()->IsProcessing());
    ConnectDevice();
    mPlayer.Play();
    EXPECT_TRUE(mPlayer.IsPlaying());
    EXPECT_TRUE(RunUntilPosition(kRate));
}

TEST_F(PlayerTest, HandlersMayStopIt) {
    ConnectDevice();
    mSession.SetSound(Write("in.wav", MakeTestSound(2, kRate)));
    Insert("vst/bad/throws_when_started" ZEL_MODULE);
    mPlayer.GetTroubleSignal().connect([this](const zelcore::ustring&) { mPlayer.Stop(); });
    mPlayer.Play();
    EXPECT_FALSE(mPlayer.IsPlaying());
    mPlayer.GetStateChangedSignal().connect([this] { mPlayer.Stop(); });
    mPlayer.Play();
    EXPECT_FALSE(mPlayer.IsPlaying());
}

/// Seconds in real time: a few, or what ZEL_SOAK_SECONDS says.
TEST_F(PlayerTest, ItPlaysOnAndOn) {
    ConnectDevice();
    const char* const given = std::getenv("ZEL_SOAK_SECONDS");
    const std::size_t seconds = given ? std::strtoul(given, nullptr, 10) : 5;
    mSession.SetSound(Write("in.wav", MakeTestSound(2, 10 * kRate + 17)));
    mSession.SetLooping(true);
    for (int i = 0; i < 4; ++i) Insert("vst/good/zel_gain" ZEL_MODULE);
    mPlayer.Play();
    ASSERT_TRUE(WaitFor([&] { return mPlayer.GetCounts().blocks >= seconds * kRate / 512 || !mPlayer.IsPlaying(); },
                        std::chrono::seconds(2 * seconds + 60), [] { QCoreApplication::processEvents(); }));
    EXPECT_EQ(mPlayer.GetCounts().lost, 0u);
    EXPECT_THAT(mTroubles, IsEmpty());
    std::cout << mPlayer.GetCounts().blocks << " blocks, " << mPlayer.GetCounts().lost << " lost\n";
}

}  // namespace zeltests
