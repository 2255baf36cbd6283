// States of plug-ins out of session files. What opens is the one way to pack it; another plug-in's, or a damaged one,
// does not open.
#include <string>

#include <boost/crc.hpp>

#include <zelcore/Utf.h>

#include "StateBytes.h"
#include "StateEnvelope.h"
#include "support/Expect.h"
#include "support/FuzzInput.h"
#include "Vst3State.h"

using namespace zelaudiofilterhost;
using zelfuzz::Expect;
using zelfuzz::FuzzInput;

namespace {

const ustring& GetComponentId() {
    static const ustring* const id = new ustring(zelcore::utility::AsciiToUTF16("VST3-0123"));
    return *id;
}

/// The beginning that every envelope of the component has, so that what is tried is what comes behind it.
StateEnvelope::Bytes GetBeginning() {
    constexpr std::size_t kBeginning = 20;  // up to the number of parts
    StateEnvelope::Bytes bytes = StateEnvelope{StateEnvelope::kVst3Parts, {}}.Pack(GetComponentId());
    bytes.resize(kBeginning);
    return bytes;
}

void AppendChecksum(StateEnvelope::Bytes& bytes) {
    boost::crc_32_type crc;
    crc.process_bytes(bytes.data(), bytes.size());
    StateWriter writer;
    writer.Put(static_cast<std::uint32_t>(crc.checksum()));
    bytes.insert(bytes.end(), writer.GetBytes().begin(), writer.GetBytes().end());
}

void CheckFit(const StateEnvelope& envelope) {
    constexpr std::size_t kValueParts = 3;
    if (!Vst3State::IsFit(envelope)) return;
    Expect(envelope.content == StateEnvelope::kVst3Parts && envelope.parts.size() == kValueParts,
           "what fits is VST3's");
    StateReader reader(envelope.parts.back());
    std::uint32_t id = 0;
    std::uint64_t bits = 0;
    while (reader.Take(id) && reader.Take(bits)) {
        const auto value = std::bit_cast<double>(bits);
        Expect(value >= 0.0 && value <= 1.0, "values of parameters are from 0 to 1");
    }
    Expect(reader.GetRest() == 0, "nothing is behind the values");
}

void Try(const StateEnvelope::Bytes& bytes, unsigned damage) {
    const auto envelope = StateEnvelope::Unpack(bytes, GetComponentId());
    if (!envelope) return;
    Expect(envelope->parts.size() <= StateEnvelope::kMaxParts, "there are not too many parts");
    Expect(envelope->Pack(GetComponentId()) == bytes, "what opens is the one way to pack it");
    Expect(!StateEnvelope::Unpack(bytes, ustring()), "what is of another plug-in does not open");
    StateEnvelope::Bytes damaged = bytes;
    damaged[damage % bytes.size()] ^= static_cast<std::uint8_t>(1 + damage % 255);
    Expect(!StateEnvelope::Unpack(damaged, GetComponentId()), "what is damaged does not open");
    CheckFit(*envelope);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzInput input(bytes, size);
    const unsigned damage = input.TakeNumber();
    const std::string_view rest = input.TakeRest();
    Try(StateEnvelope::Bytes(rest.begin(), rest.end()), damage);

    static const StateEnvelope::Bytes beginning = GetBeginning();
    StateEnvelope::Bytes whole = beginning;
    // The content's number stands in the middle of it.
    whole[8] = static_cast<std::uint8_t>(damage % 5);
    whole.insert(whole.end(), rest.begin(), rest.end());
    AppendChecksum(whole);
    Try(whole, damage);
    return 0;
}
