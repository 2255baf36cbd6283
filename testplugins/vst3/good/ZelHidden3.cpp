// A stereo gain that keeps the host's buffer size and sample rate in parameters which nobody is to see, as some plug-in
// frameworks do: one before the gain and one behind it.
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Controller : public Vst3Controller {
public:
    using Vst3Controller::Vst3Controller;

    tresult PLUGIN_API getParameterInfo(int32 index, Vst::ParameterInfo& info) override {
        const tresult result = Vst3Controller::getParameterInfo(index, info);
        if (index == 0 || index == 2) info.flags = Vst::ParameterInfo::kIsHidden | Vst::ParameterInfo::kIsReadOnly;
        return result;
    }
};

class Hidden : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

protected:
    Vst3Controller* MakeController() override { return new Controller(mFacts); }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Hidden(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory({{.name = "Zel Hidden 3",
                             .id = MakeId(90),
                             .buses = {{Vst::kInput, 2, "Input"}, {Vst::kOutput, 2, "Output"}},
                             .parameters = {"Buffer Size", "Gain", "Sample Rate", "Mix"}}});
    return &factory;
}
