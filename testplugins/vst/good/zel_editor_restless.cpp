// An editor that wants another size whenever it gets a turn, is asked for its size, opens or closes.
#include "support/Vst2EditorPlugin.h"

namespace {

using namespace zeltestplugins;

class Restless : public Vst2EditorPlugin {
public:
    explicit Restless(vst2::HostCallback host)
        : Vst2EditorPlugin(host, {"Zel Editor Restless", 0x5A457273, 2, 2, {"Calls", "Answer at the end"}}, 100, 100) {}
    ~Restless() override { Change(); }

protected:
    vst2::EditorRect* GetRect() override {
        Change();
        SetRect(100 + mCount % 64, 200 + mCount % 64);
        return &mRect;
    }
    bool OpenEditor(void*) override {
        Change();
        return true;
    }
    void CloseEditor() override {
        Change();
        mAnswerAtEnd = mAnswer;
    }
    void IdleEditor() override {
        for (int i = 0; i < 10; ++i) Change();
    }
    std::string TellParameter(std::int32_t index) override {
        return index == 0 ? TakeCalls() : std::to_string(mAnswerAtEnd);
    }

private:
    void Change() {
        ++mCount;
        mAnswer = AskSize(300 + mCount % 64, 400 + mCount % 64);
    }

    int mCount = 0;
    std::intptr_t mAnswer = -1;
    std::intptr_t mAnswerAtEnd = -1;
};

}  // namespace

ZEL_VST2_ENTRY { return (new Restless(host))->GetEffect(); }
