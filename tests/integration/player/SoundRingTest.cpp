#include "SoundRing.h"

#include <algorithm>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using tessaly::SoundRing;

namespace zeltests {

TEST(SoundRingTest, RoomAndWhatIsThereAddUpToTheCapacity) {
    SoundRing ring(1, 10);
    const std::vector<float> samples(10, 0.5f);
    const float* const in[] = {samples.data()};
    ring.Write(in, 7);
    EXPECT_EQ(ring.GetRoom(), 3u);
    EXPECT_EQ(ring.GetAvailable(), 7u);
    std::vector<float> taken(10);
    float* const out[] = {taken.data()};
    ring.Read(out, 5);
    EXPECT_EQ(ring.GetRoom(), 8u);
    EXPECT_EQ(ring.GetAvailable(), 2u);
}

TEST(SoundRingTest, WhatGoesInOnOneThreadComesOutOnAnotherUnchanged) {
    constexpr std::size_t kFrames = 200000;
    SoundRing ring(2, 1000);
    std::thread writer([&] {
        std::vector<float> samples;
        for (std::size_t done = 0, size = 1; done < kFrames; done += size) {
            size = std::min<std::size_t>(done % 37 + 1, kFrames - done);
            samples.clear();
            for (std::size_t i = done; i < done + size; ++i) samples.push_back(static_cast<float>(i));
            while (ring.GetRoom() < size) std::this_thread::yield();
            const float* const in[] = {samples.data(), samples.data()};
            ring.Write(in, size);
        }
        ring.End();
    });
    std::size_t next = 0;
    std::size_t wrong = 0;
    std::vector<float> left(1000), right(1000);
    for (;;) {
        const bool hasEnded = ring.HasEnded();
        const std::size_t count = std::min<std::size_t>(ring.GetAvailable(), 53);
        if (count == 0 && hasEnded) break;
        float* const out[] = {left.data(), right.data()};
        ring.Read(out, count);
        for (std::size_t i = 0; i < count; ++i, ++next) {
            if (left[i] != static_cast<float>(next) || right[i] != left[i]) ++wrong;
        }
    }
    writer.join();
    EXPECT_EQ(next, kFrames);
    EXPECT_EQ(wrong, 0u);
}

}  // namespace zeltests
