// Parameters whose titles, units, values and texts are of every kind that a host has to cope with.
#include <limits>
#include <stdexcept>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

struct Spoken {
    std::u16string title;
    std::u16string units;
    std::u16string text;
    std::u16string shortTitle = u"";
    double value = 0.5;
};

/// Parameters that answer otherwise than by their entry.
constexpr int32 kRefuses = 7;
constexpr int32 kThrows = 9;

const std::vector<Spoken>& GetEntries() {
    static const std::vector<Spoken> entries = {
        {u"", u"", u""},
        {std::u16string(127, u'T'), std::u16string(127, u'U'), std::u16string(127, u'V')},
        // The whole buffer, without an end.
        {std::u16string(128, u't'), std::u16string(128, u'u'), std::u16string(128, u'v')},
        {u"Gr\u00F6\u00DFe", u"\u03A9", u"\u2212\u221E"},
        {std::u16string{u'a', char16_t(0xD800), u'b'}, std::u16string{char16_t(0xDC00)},
         std::u16string{u'1', char16_t(0xDBFF)}},
        {u"Two\nlines\t", u"\u0007", u" 1\r\n"},
        {u"", u"dB", u"1", u"Short"},
        {u"Refuses", u"x", u"x"},
        {u"No number", u"", u"none", u"", std::numeric_limits<double>::quiet_NaN()},
        {u"Throws", u"x", u"x"},
        {u"Too much", u"", u"7.5", u"", 7.5}};
    return entries;
}

void Write(Vst::String128 target, const std::u16string& text) {
    std::fill_n(target, 128, Vst::TChar(0));
    std::copy(text.begin(), text.end(), target);
}

class Controller : public Vst3Controller {
public:
    using Vst3Controller::Vst3Controller;

    int32 PLUGIN_API getParameterCount() override { return static_cast<int32>(GetEntries().size()); }
    tresult PLUGIN_API getParameterInfo(int32 index, Vst::ParameterInfo& info) override {
        const Spoken& entry = GetEntries().at(static_cast<std::size_t>(index));
        info = {};
        info.id = static_cast<Vst::ParamID>(index);
        Write(info.title, entry.title);
        Write(info.shortTitle, entry.shortTitle);
        Write(info.units, entry.units);
        return index == kRefuses ? kResultFalse : kResultOk;
    }
    tresult PLUGIN_API getParamStringByValue(Vst::ParamID id, Vst::ParamValue, Vst::String128 text) override {
        if (id == kThrows) throw std::runtime_error("no text");
        Write(text, GetEntries().at(id).text);
        return kResultOk;
    }
    Vst::ParamValue PLUGIN_API getParamNormalized(Vst::ParamID id) override {
        if (id == kThrows) throw 42;
        return GetEntries().at(id).value;
    }
    tresult PLUGIN_API setParamNormalized(Vst::ParamID id, Vst::ParamValue) override {
        if (id == kThrows) throw std::runtime_error("no value");
        return kResultFalse;
    }
};

class Texts : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

protected:
    Vst3Controller* MakeController() override { return new Controller(mFacts); }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Texts(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory({{.name = "Zel Texts 3", .id = MakeId(44)}});
    return &factory;
}
