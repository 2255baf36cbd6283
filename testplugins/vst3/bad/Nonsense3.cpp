// Claims impossible counts, leaves texts unterminated and gives every class the same id.
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr int32 kHuge = 0x7FFFFFFF;

template <typename Text>
void Fill(Text& text, int unit) {
    std::fill(std::begin(text), std::end(text), static_cast<std::remove_reference_t<decltype(text[0])>>(unit));
}

class Controller : public Vst3Controller {
public:
    using Vst3Controller::Vst3Controller;

    int32 PLUGIN_API getParameterCount() override { return kHuge; }
};

class Component : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

    int32 PLUGIN_API getBusCount(Vst::MediaType, Vst::BusDirection direction) override {
        return direction == Vst::kInput ? kHuge : -kHuge;
    }
    tresult PLUGIN_API getBusInfo(Vst::MediaType, Vst::BusDirection, int32 index, Vst::BusInfo& info) override {
        info.channelCount = index == 0 ? kHuge : -kHuge;
        info.busType = kHuge;
        // A surrogate that has lost its partner, 128 times, and no end.
        Fill(info.name, 0xD800);
        return kResultOk;
    }

protected:
    Vst3Controller* MakeController() override { return new Controller(mFacts); }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

    int32 PLUGIN_API countClasses() override { return kHuge; }
    tresult PLUGIN_API getFactoryInfo(PFactoryInfo* info) override {
        Fill(info->vendor, 0xFF);
        return kResultOk;
    }
    tresult PLUGIN_API getClassInfo2(int32, PClassInfo2* info) override {
        Vst3Factory::getClassInfo2(0, info);
        Fill(info->name, 0xFF);
        Fill(info->vendor, 'V');
        Fill(info->version, 1);
        Fill(info->subCategories, '|');
        return kResultOk;
    }

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Component(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory({{.name = "Nonsense", .id = MakeId(31)}});
    return &factory;
}
