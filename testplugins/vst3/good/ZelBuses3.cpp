// Effects that differ in their buses: several with and without names; none at all; one of 64 channels; one for each
// arrangement of speakers; some that count otherwise than they arrange. Sound passes from each input to the output of
// the same number, counted across all buses.
#include <pluginterfaces/vst/vstspeaker.h>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;
namespace Arr = Vst::SpeakerArr;

class Buses : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

protected:
    void Process(Vst::ProcessData& data) override {
        std::vector<const float*> inputs;
        for (int32 bus = 0; bus < data.numInputs; ++bus) {
            float** const channels = data.inputs[bus].channelBuffers32;
            inputs.insert(inputs.end(), channels, channels + data.inputs[bus].numChannels);
        }
        std::size_t next = 0;
        for (int32 bus = 0; bus < data.numOutputs; ++bus) {
            for (int32 channel = 0; channel < data.outputs[bus].numChannels; ++channel, ++next) {
                if (next >= inputs.size()) return;
                std::copy_n(inputs[next], data.numSamples, data.outputs[bus].channelBuffers32[channel]);
            }
        }
    }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Buses(facts); }
};

Vst3Bus Arranged(const char* name, Vst::SpeakerArrangement arrangement) {
    return {Vst::kInput, static_cast<int32>(std::popcount(arrangement)), name, false, arrangement};
}

constexpr Vst::SpeakerArrangement kHighest = Vst::SpeakerArrangement(1) << 63;

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory(
        {{.name = "Several Buses",
          .id = MakeId(91),
          .buses = {{Vst::kInput, 2, "Program"},
                    {Vst::kInput, 1, "Key", true},
                    {Vst::kInput, 1, ""},
                    {Vst::kInput, 2, "", true},
                    {Vst::kOutput, 2, "Program"},
                    {Vst::kOutput, 1, "Monitor", true},
                    {Vst::kOutput, 2, ""}}},
         {.name = "No Buses", .id = MakeId(92), .buses = {}},
         {.name = "Sixty-four",
          .id = MakeId(93),
          .buses = {{Vst::kInput, 64, "In", false, Arr::kEmpty}, {Vst::kOutput, 64, "Out", false, Arr::kEmpty}}},
         {.name = "Speakers",
          .id = MakeId(94),
          .buses = {Arranged("mono", Arr::kMono), Arranged("stereo", Arr::kStereo), Arranged("sides", Arr::kStereoSide),
                    Arranged("surrounds", Arr::kStereoSurround), Arranged("4.0", Arr::k40Cine),
                    Arranged("5.1", Arr::k51), Arranged("6.1", Arr::k61Cine), Arranged("7.1", Arr::k71Music),
                    Arranged("7.1 front", Arr::k71Cine), Arranged("7.1.2", Arr::k71_2), Arranged("7.1.4", Arr::k71_4),
                    Arranged("tops", Vst::kSpeakerTc | Vst::kSpeakerTfc | Vst::kSpeakerTrc | Vst::kSpeakerLfe2),
                    Arranged("one side", Vst::kSpeakerSl | Vst::kSpeakerRs),
                    Arranged("ambisonics", Arr::kAmbi1stOrderACN),
                    Arranged("bottom", Arr::kStereo | Vst::kSpeakerBfl | Vst::kSpeakerBfr),
                    Arranged("highest", Vst::kSpeakerL | kHighest)}},
         {.name = "Miscounted",
          .id = MakeId(95),
          .buses = {{Vst::kInput, 3, "More", false, Arr::kStereo},
                    {Vst::kInput, 1, "Fewer", false, Arr::kStereo},
                    {Vst::kInput, 2, "Unsaid", false, Arr::kEmpty},
                    {Vst::kInput, 0, "None", false, Arr::kStereo},
                    {Vst::kOutput, 2, "Output"}}}});
    return &factory;
}
