#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <StateBytes.h>
#include <StateEnvelope.h>
#include <zelcore/Utf.h>

#include <boost/crc.hpp>

using namespace zelaudiofilterhost;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

typedef StateEnvelope::Bytes Bytes;

const zelcore::ustring kId = zelcore::utility::AsciiToUTF16("VST-5A476169");
const zelcore::ustring kOtherId = zelcore::utility::AsciiToUTF16("VST-5A47616A");

constexpr std::size_t kVersionAt = 4;
constexpr std::size_t kContentAt = 8;
constexpr std::size_t kCountAt = 20;
constexpr std::size_t kSizesAt = 24;

const StateEnvelope kSmall = {StateEnvelope::kVst2Chunk, {{1, 2, 3}, {}, {0xFF}}};

/// A checksum as it should be, so that it is not what gives a broken envelope away.
Bytes Seal(Bytes bytes) {
    bytes.resize(bytes.size() - 4);
    boost::crc_32_type crc;
    crc.process_bytes(bytes.data(), bytes.size());
    StateWriter writer;
    writer.Put(bytes);
    writer.Put(static_cast<std::uint32_t>(crc.checksum()));
    return writer.TakeBytes();
}

Bytes SetNumber(Bytes bytes, std::size_t at, std::uint32_t number) {
    StateWriter writer;
    writer.Put(number);
    std::copy_n(writer.GetBytes().begin(), 4, bytes.begin() + static_cast<std::ptrdiff_t>(at));
    return Seal(std::move(bytes));
}

bool IsTaken(const Bytes& bytes) { return StateEnvelope::Unpack(bytes, kId).has_value(); }

}  // namespace

TEST(StateEnvelopeTest, GivesBackWhatWasPacked) {
    for (const StateEnvelope& envelope :
         {kSmall, StateEnvelope{StateEnvelope::kVst3Parts, {}}, StateEnvelope{StateEnvelope::kVst2Values, {{}, {}}},
          StateEnvelope{StateEnvelope::kVst3Parts, std::vector<Bytes>(StateEnvelope::kMaxParts, Bytes(1000, 7))}}) {
        EXPECT_EQ(StateEnvelope::Unpack(envelope.Pack(kId), kId), envelope);
    }
}

TEST(StateEnvelopeTest, ItsLayoutIsTheSameOnEveryMachine) {
    EXPECT_THAT(kSmall.Pack(kId), ElementsAre('Z', 'E', 'L', 'S', 1, 0, 0, 0, 1, 0, 0, 0,  // magic, version, content
                                              0x46, 0xDB, 0x80, 0xB8, 0xA8, 0x33, 0xF5, 0x11,  // mark of the ID
                                              3, 0, 0, 0, 3, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0,  // number of parts, sizes
                                              1, 2, 3, 0xFF, 0xAD, 0x48, 0x5F, 0x26));
}

TEST(StateEnvelopeTest, OneThatIsCutAnywhereIsNotTaken) {
    const Bytes whole = kSmall.Pack(kId);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_FALSE(IsTaken(cut)) << length;
        if (length >= 4) {
            EXPECT_FALSE(IsTaken(Seal(cut))) << length << ", sealed";
        }
    }
}

TEST(StateEnvelopeTest, OneThatIsChangedAnywhereIsNotTaken) {
    const Bytes whole = kSmall.Pack(kId);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const int change : {1, 0x80, 0xFF}) {
            Bytes changed = whole;
            changed[at] = static_cast<std::uint8_t>(changed[at] ^ change);
            EXPECT_FALSE(IsTaken(changed)) << at;
        }
    }
}

TEST(StateEnvelopeTest, OneWithMoreBehindItIsNotTaken) {
    Bytes longer = kSmall.Pack(kId);
    longer.push_back(0);
    EXPECT_FALSE(IsTaken(longer));
    longer.resize(longer.size() + 3);
    EXPECT_FALSE(IsTaken(Seal(longer)));
}

TEST(StateEnvelopeTest, SizesThatLieAreNotTaken) {
    const Bytes whole = kSmall.Pack(kId);
    ASSERT_TRUE(IsTaken(Seal(whole)));
    for (const std::uint32_t size : {0u, 2u, 4u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        EXPECT_FALSE(IsTaken(SetNumber(whole, kSizesAt, size))) << size;
    }
    // Their sum is right in 32 bits.
    EXPECT_FALSE(IsTaken(SetNumber(SetNumber(whole, kSizesAt, 0xFFFFFFFF), kSizesAt + 4, 4)));
    for (const std::uint32_t count : {0u, 1u, 2u, 4u, 9u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        EXPECT_FALSE(IsTaken(SetNumber(whole, kCountAt, count))) << count;
    }
}

TEST(StateEnvelopeTest, OneOfALaterVersionOrOfUnknownContentIsNotTaken) {
    const Bytes whole = kSmall.Pack(kId);
    for (const std::uint32_t version : {0u, 2u, 0xFFFFFFFFu})
        EXPECT_FALSE(IsTaken(SetNumber(whole, kVersionAt, version)));
    for (const std::uint32_t content : {0u, 4u, 0xFFFFFFFFu})
        EXPECT_FALSE(IsTaken(SetNumber(whole, kContentAt, content)));
}

TEST(StateEnvelopeTest, OneOfAnotherComponentIsNotTaken) {
    EXPECT_FALSE(IsTaken(kSmall.Pack(kOtherId)));
    EXPECT_FALSE(IsTaken(kSmall.Pack(zelcore::ustring())));
}

TEST(StateEnvelopeTest, MoreThanAStateMayHaveIsNotPacked) {
    constexpr std::size_t kAround = kSizesAt + 4 + 4;
    const std::size_t most = AudioFilter::kMaxStateSize - kAround;
    const Bytes largest = StateEnvelope{StateEnvelope::kVst2Chunk, {Bytes(most, 1)}}.Pack(kId);
    EXPECT_EQ(largest.size(), std::size_t(AudioFilter::kMaxStateSize));
    EXPECT_TRUE(IsTaken(largest));
    EXPECT_THAT((StateEnvelope{StateEnvelope::kVst2Chunk, {Bytes(most + 1, 1)}}.Pack(kId)), IsEmpty());
    EXPECT_THAT((StateEnvelope{StateEnvelope::kVst2Chunk, std::vector<Bytes>(9)}.Pack(kId)), IsEmpty());
}

TEST(StateEnvelopeTest, BytesOfAnythingElseAreNotTaken) {
    EXPECT_FALSE(IsTaken({}));
    EXPECT_FALSE(IsTaken(Bytes(1000, 0)));
    EXPECT_FALSE(IsTaken(Bytes(AudioFilter::kMaxStateSize + 1, 'Z')));
}
