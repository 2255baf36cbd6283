// Tries out what a host hands it, sensibly and not, and tells what came of it by its parameters: each is titled for
// what was tried and is 1 when the host stood it.
#include <cstdint>
#include <limits>

#include <pluginterfaces/vst/ivstprocesscontext.h>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

enum Trial : Vst::ParamID {
    kState,
    kStreamReads,
    kStreamSeeks,
    kStreamLimit,
    kOldHandler,
    kInputChanges,
    kOutputChanges,
    kCallOrder,
    kContext,
    kTrials
};

const std::vector<const char*> kTitles = {"State arrives",       "Reads end at the end", "Seeks stay inside",
                                          "Writes have a limit", "Old handlers stay",    "Input changes are the host's",
                                          "Output changes end",  "Calls come in order",  "Context makes sense"};

constexpr int64 kFar = std::numeric_limits<int64>::max();
constexpr char kText[] = "state";
constexpr int32 kLength = 5;

bool TryState(IBStream* stream) {
    char text[16] = {};
    int32 length = 0;
    return stream->read(text, sizeof(text), &length) == kResultOk && length == kLength && std::string(text) == kText;
}

bool TryReads(IBStream* stream) {
    char byte = 0;
    int32 length = -1;
    const bool ends = stream->read(&byte, 1, &length) == kResultOk && length == 0;
    return ends && stream->read(&byte, -1, &length) != kResultOk && length == 0 &&
           stream->read(nullptr, 1, nullptr) != kResultOk && stream->write(nullptr, 1, nullptr) != kResultOk &&
           stream->write(&byte, std::numeric_limits<int32>::min(), nullptr) != kResultOk;
}

bool TrySeeks(IBStream* stream) {
    int64 position = -1;
    bool refused = stream->tell(nullptr) != kResultOk;
    for (const int32 mode : {IBStream::kIBSeekSet, IBStream::kIBSeekCur, IBStream::kIBSeekEnd}) {
        refused = refused && stream->seek(kFar, mode, nullptr) != kResultOk;
        refused = refused && stream->seek(std::numeric_limits<int64>::min(), mode, nullptr) != kResultOk;
        refused = refused && stream->seek(-kLength - 1, mode, nullptr) != kResultOk;
    }
    refused = refused && stream->seek(0, 3, nullptr) != kResultOk;
    const bool stays = stream->tell(&position) == kResultOk && position == kLength;
    const bool moves = stream->seek(-2, IBStream::kIBSeekEnd, &position) == kResultOk && position == kLength - 2;
    return refused && stays && moves;
}

bool TryLimit(IBStream* stream) {
    std::vector<char> block(1 << 20);
    int64 position = 0;
    stream->seek(kLength + 1, IBStream::kIBSeekSet, nullptr);
    int blocks = 0;
    while (blocks < 1000 && stream->write(block.data(), int32(block.size()), nullptr) == kResultOk) ++blocks;
    stream->tell(&position);
    // What had no room is refused as a whole, and the gap before it was filled with zeros.
    char gap[2] = {'x', 'x'};
    stream->seek(kLength - 1, IBStream::kIBSeekSet, nullptr);
    stream->read(gap, 2, nullptr);
    return blocks > 0 && blocks < 1000 && position == kLength + 1 + int64(blocks) * int64(block.size()) &&
           gap[0] == 'e' && gap[1] == 0;
}

/// The handler of the instance before, kept on purpose until the module goes.
struct Keeper {
    Vst::IComponentHandler* handler = nullptr;

    bool TryOld() const {
        if (handler == nullptr) return true;
        handler->beginEdit(0);
        const bool stands = handler->performEdit(0, 0.0) == kResultOk;
        handler->endEdit(0);
        handler->restartComponent(Vst::kReloadComponent);
        return stands;
    }
    void Keep(Vst::IComponentHandler* next) {
        next->addRef();
        Drop();
        handler = next;
    }
    void Drop() {
        if (handler != nullptr) handler->release();
        handler = nullptr;
    }
};

Keeper gKeeper;

class Controller : public Vst3Controller {
public:
    explicit Controller(const Vst3Facts& facts) : Vst3Controller(facts) {
        for (std::size_t i = 0; i < kTrials; ++i) mValues[i] = 0.0;
    }

    tresult PLUGIN_API setComponentHandler(Vst::IComponentHandler* handler) override {
        if (handler == nullptr) return kResultOk;
        Set(kOldHandler, gKeeper.TryOld());
        gKeeper.Keep(handler);
        return kResultOk;
    }
    tresult PLUGIN_API setComponentState(IBStream* stream) override {
        Set(kState, TryState(stream));
        Set(kStreamReads, TryReads(stream));
        Set(kStreamSeeks, TrySeeks(stream));
        Set(kStreamLimit, TryLimit(stream));
        return kResultFalse;
    }

private:
    void Set(Trial trial, bool stood) { mValues[trial] = stood ? 1.0 : 0.0; }
};

class Curious : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

    tresult PLUGIN_API getState(IBStream* state) override {
        char text[] = "state";
        return state->write(text, kLength, nullptr);
    }
    tresult PLUGIN_API activateBus(Vst::MediaType, Vst::BusDirection, int32, TBool on) override {
        mInOrder = mInOrder && !mActive;
        mBuses += on != 0 ? 1 : -1;
        return kResultOk;
    }
    tresult PLUGIN_API setupProcessing(Vst::ProcessSetup& setup) override {
        mInOrder = mInOrder && !mActive && setup.symbolicSampleSize == Vst::kSample32;
        mRate = setup.sampleRate;
        return kResultOk;
    }
    tresult PLUGIN_API setActive(TBool on) override {
        mInOrder = mInOrder && mActive != (on != 0) && !mProcessing && mBuses == 3 && mRate > 0.0;
        mActive = on != 0;
        return kResultOk;
    }
    tresult PLUGIN_API setProcessing(TBool on) override {
        mInOrder = mInOrder && mActive && mProcessing != (on != 0);
        mProcessing = on != 0;
        return kNotImplemented;
    }

protected:
    void Process(Vst::ProcessData& data) override {
        Vst3Component::Process(data);
        std::vector<std::pair<Vst::ParamID, bool>> found = {{kInputChanges, TryInput(*data.inputParameterChanges)},
                                                            {kCallOrder, mInOrder && mProcessing},
                                                            {kContext, IsContext(data)}};
        std::vector<Vst::IParamValueQueue*> answers;
        int32 index = 0;
        for (const auto& entry : found)
            answers.push_back(data.outputParameterChanges->addParameterData(entry.first, index));
        answers.push_back(data.outputParameterChanges->addParameterData(kOutputChanges, index));
        const bool ends = TryOutput(*data.outputParameterChanges);
        for (std::size_t i = 0; i < found.size(); ++i) answers[i]->addPoint(0, found[i].second ? 1.0 : 0.0, index);
        answers.back()->addPoint(0, ends ? 1.0 : 0.0, index);
        SpoilBuses(data);
    }

private:
    static bool TryInput(Vst::IParameterChanges& changes) {
        int32 index = 0;
        const int32 count = changes.getParameterCount();
        const bool refused = changes.addParameterData(1, index) == nullptr && changes.getParameterData(-1) == nullptr &&
                             changes.getParameterData(count) == nullptr;
        if (count == 0) return refused;
        Vst::IParamValueQueue* const queue = changes.getParameterData(0);
        double value = 0.0;
        return refused && queue->getPoint(-1, index, value) != kResultOk &&
               queue->getPoint(1, index, value) != kResultOk;
    }
    /// Adds without end, and points that lie nowhere.
    static bool TryOutput(Vst::IParameterChanges& changes) {
        int32 index = 0;
        for (std::uint32_t i = 0; i < 1'000'000; ++i) {
            Vst::IParamValueQueue* const queue = changes.addParameterData(kTrials + i, index);
            if (queue == nullptr) return true;
            queue->addPoint(-5, 1e300, index);
        }
        return false;
    }
    bool IsContext(const Vst::ProcessData& data) const {
        const Vst::ProcessContext* const context = data.processContext;
        return context != nullptr && context->sampleRate == mRate && context->tempo == 120.0 &&
               context->timeSigNumerator == 4 && context->timeSigDenominator == 4 &&
               (context->state & Vst::ProcessContext::kPlaying) == 0;
    }
    static void SpoilBuses(Vst::ProcessData& data) {
        for (int32 bus = 0; bus < data.numInputs; ++bus) data.inputs[bus] = Vst::AudioBusBuffers();
        for (int32 bus = 0; bus < data.numOutputs; ++bus) {
            std::fill_n(data.outputs[bus].channelBuffers32, data.outputs[bus].numChannels, nullptr);
            data.outputs[bus].numChannels = 1000;
        }
    }

    int mBuses = 0;
    bool mActive = false;
    bool mProcessing = false;
    bool mInOrder = true;
    double mRate = 0.0;
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Curious(facts); }
    Vst::IEditController* MakeController(const Vst3Facts& facts) override { return new Controller(facts); }
};

}  // namespace

ZEL_VST3_MODULE_WITH(true, (gKeeper.Drop(), true))

ZEL_VST3_FACTORY {
    static Factory factory(
        {{.name = "Zel Curious 3",
          .id = MakeId(47),
          .buses = {{Vst::kInput, 2, "Input"}, {Vst::kInput, 0, "Nothing", true}, {Vst::kOutput, 2, "Output"}},
          .parameters = kTitles,
          .controllerId = MakeId(48)}});
    return &factory;
}
