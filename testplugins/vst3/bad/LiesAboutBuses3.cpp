// Effects that do something else than they say when they are asked for other speakers, each named for it. Sound passes
// through.
#include <stdexcept>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr Vst::SpeakerArrangement k51 = 0x3F;

class Liar : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

    tresult PLUGIN_API setBusArrangements(Vst::SpeakerArrangement* inputs, int32 inputCount,
                                          Vst::SpeakerArrangement* outputs, int32 outputCount) override {
        if (inputCount != 1 || outputCount != 1) return kInvalidArgument;
        const bool isNews = inputs[0] != ArrangementOf(Vst::kInput, 0) || outputs[0] != ArrangementOf(Vst::kOutput, 0);
        const std::string name = mFacts.name;
        if (!isNews || name == "Agrees And Does Nothing") return kResultOk;
        if (name == "Changes Its Outputs Only") Arrange(Vst::kOutput, 0, outputs[0]);
        if (name == "Changes And Refuses") {
            Arrange(Vst::kInput, 0, k51);
            Arrange(Vst::kOutput, 0, k51);
            return kResultFalse;
        }
        if (name == "Changes And Throws") {
            Arrange(Vst::kInput, 0, inputs[0]);
            Arrange(Vst::kOutput, 0, outputs[0]);
            throw std::runtime_error("not today");
        }
        mThrows = name == "Throws From Then On";
        if (name == "Clears What It Was Asked") inputs[0] = outputs[0] = 0;
        return kResultOk;
    }

    tresult PLUGIN_API getBusInfo(Vst::MediaType type, Vst::BusDirection direction, int32 index,
                                  Vst::BusInfo& info) override {
        if (mThrows) throw std::runtime_error("not any more");
        const tresult result = Vst3Component::getBusInfo(type, direction, index, info);
        if (std::string(mFacts.name) == "Never The Same") info.channelCount = ++mCount;
        return result;
    }

private:
    bool mThrows = false;
    int32 mCount = 0;
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Liar(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory({{.name = "Agrees And Does Nothing", .id = MakeId(98)},
                            {.name = "Changes Its Outputs Only", .id = MakeId(99)},
                            {.name = "Changes And Refuses", .id = MakeId(100)},
                            {.name = "Changes And Throws", .id = MakeId(101)},
                            {.name = "Throws From Then On", .id = MakeId(102)},
                            {.name = "Clears What It Was Asked", .id = MakeId(103)},
                            {.name = "Never The Same", .id = MakeId(104)}});
    return &factory;
}
