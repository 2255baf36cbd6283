// Tells in its parameters' texts what its host says and does. Ends the process when it is closed or set up while it
// runs, as some do.
#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>

#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Listening : public Vst2Plugin {
public:
    explicit Listening(vst2::HostCallback host)
        : Vst2Plugin(host, {"Zel Listening",
                            0x5A4C6973,
                            2,
                            2,
                            {"Calls", "Rate", "Block size", "Rate of the time", "Level", "Level while processing",
                             "Level elsewhere meanwhile", "Rate of a copy"}}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        switch (operation) {
            case vst2::kSetSampleRate:
                return Note("rate " + std::to_string(static_cast<int>(number)));
            case vst2::kSetBlockSize:
                return Note("size " + std::to_string(value));
            case vst2::kMainsChanged:
                mIsOn = value != 0;
                mCalls += mIsOn ? "on " : "off ";
                return 0;
            case vst2::kStartProcess:
                mCalls += "start ";
                return 0;
            case vst2::kStopProcess:
                mCalls += "stop ";
                return 0;
            case vst2::kClose:
                if (mIsOn) std::abort();
                return 0;
            case vst2::kGetParameterDisplay:
                return Answer(pointer, 256, Tell(index).c_str());
            default:
                return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
    }

    void Process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        mLevel = Ask(vst2::kHostGetProcessLevel);
        std::thread([this] { mLevelElsewhere = Ask(vst2::kHostGetProcessLevel); }).join();
        Vst2Plugin::Process(inputs, outputs, frames);
    }

private:
    std::intptr_t Note(const std::string& call) {
        if (mIsOn) std::abort();
        mCalls += call + " ";
        return 1;
    }

    std::intptr_t Ask(vst2::HostOperation operation) { return mHost(&mEffect, operation, 0, 0, nullptr, 0.0f); }

    std::string Tell(std::int32_t index) {
        switch (index) {
            case 0:
                return mCalls;
            case 1:
                return std::to_string(Ask(vst2::kHostGetSampleRate));
            case 2:
                return std::to_string(Ask(vst2::kHostGetBlockSize));
            case 3:
                return std::to_string(
                    static_cast<int>(reinterpret_cast<const vst2::TimeInfo*>(Ask(vst2::kHostGetTime))->sampleRate));
            case 4:
                return std::to_string(Ask(vst2::kHostGetProcessLevel));
            case 5:
                return std::to_string(mLevel);
            case 6:
                return std::to_string(mLevelElsewhere);
            default: {
                vst2::Effect copy = mEffect;
                return std::to_string(mHost(&copy, vst2::kHostGetSampleRate, 0, 0, nullptr, 0.0f));
            }
        }
    }

    std::string mCalls;
    bool mIsOn = false;
    std::atomic<std::intptr_t> mLevel{-1};
    std::atomic<std::intptr_t> mLevelElsewhere{-1};
};

}  // namespace

ZEL_VST2_ENTRY { return (new Listening(host))->GetEffect(); }
