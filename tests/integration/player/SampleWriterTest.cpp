#include "SampleWriter.h"

#include <cstdint>
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using tessaly::SampleWriter;
using testing::ElementsAre;

namespace zeltests {

namespace {

template <typename Sample>
std::vector<Sample> Write(SampleWriter::Kind kind, const std::vector<std::vector<float>>& sound, std::size_t channels) {
    const SampleWriter writer(kind, sound.size(), channels);
    EXPECT_EQ(writer.GetFrameSize(), sizeof(Sample) * channels);
    std::vector<const float*> pointers;
    for (const std::vector<float>& channel : sound) pointers.push_back(channel.data());
    // One byte off: devices promise nothing about where their buffers begin.
    std::vector<char> bytes(writer.GetFrameSize() * sound[0].size() + 1);
    writer.Write(pointers.data(), static_cast<int>(sound[0].size()), bytes.data() + 1);
    std::vector<Sample> samples(sound[0].size() * channels);
    std::memcpy(samples.data(), bytes.data() + 1, bytes.size() - 1);
    return samples;
}

}  // namespace

TEST(SampleWriterTest, FloatsAreWrittenAsTheyAreBesideEachOther) {
    EXPECT_THAT(Write<float>(SampleWriter::kFloat, {{0.1f, 1.5f}, {-0.2f, 0.0f}}, 2),
                ElementsAre(0.1f, -0.2f, 1.5f, 0.0f));
}

TEST(SampleWriterTest, WholeNumbersAreHeldAtFullScale) {
    EXPECT_THAT(Write<std::int16_t>(SampleWriter::kSigned16, {{0.0f, 1.0f, -1.0f, 3.0f, -3.0f, 0.5f}}, 1),
                ElementsAre(0, 32767, -32767, 32767, -32767, 16384));
    EXPECT_THAT(Write<std::int32_t>(SampleWriter::kSigned32, {{0.0f, 1.0f, -3.0f}}, 1),
                ElementsAre(0, 2147483647, -2147483647));
    EXPECT_THAT(Write<std::uint8_t>(SampleWriter::kUnsigned8, {{0.0f, 1.0f, -3.0f}}, 1), ElementsAre(128, 255, 1));
}

TEST(SampleWriterTest, MonoIsHeardOnTheLeftAndTheRight) {
    EXPECT_THAT(Write<float>(SampleWriter::kFloat, {{0.5f}}, 4), ElementsAre(0.5f, 0.5f, 0.0f, 0.0f));
}

TEST(SampleWriterTest, AChannelThatTheSoundDoesNotHaveIsSilent) {
    EXPECT_THAT(Write<float>(SampleWriter::kFloat, {{0.5f}, {0.25f}}, 3), ElementsAre(0.5f, 0.25f, 0.0f));
    EXPECT_THAT(Write<std::uint8_t>(SampleWriter::kUnsigned8, {{0.0f}, {0.0f}}, 3), ElementsAre(128, 128, 128));
}

TEST(SampleWriterTest, ADeviceOfFewerChannelsGetsTheFirst) {
    EXPECT_THAT(Write<float>(SampleWriter::kFloat, {{0.5f}, {0.25f}, {0.1f}}, 2), ElementsAre(0.5f, 0.25f));
}

}  // namespace zeltests
