// Five parameters; the first says how many there are: above 0.5 it leaves two, above 0.9 it makes eight. What it is
// told or asked of one that is not there ends the process.
#include <cstdlib>

#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr std::int32_t kUsual = 5;
constexpr std::int32_t kFew = 2;

class Changing : public Vst2Plugin {
public:
    explicit Changing(vst2::HostCallback host)
        : Vst2Plugin(host, {"Zel Changing", 0x5A436861, 2, 2, {"Count", "B", "C", "D", "E", "F", "G", "H"}}) {
        mValues.assign(mValues.size(), 0.0f);
        mEffect.parameterCount = kUsual;
        mEffect.setParameter = &OnSet;
        mEffect.getParameter = &OnGet;
    }

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation == vst2::kGetParameterName || operation == vst2::kGetParameterLabel ||
            operation == vst2::kGetParameterDisplay) {
            Check(index);
        }
        return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
    }

private:
    void Check(std::int32_t index) const {
        if (!HasParameter(index)) std::abort();
    }

    static Changing& Of(vst2::Effect* effect) { return *static_cast<Changing*>(effect->object); }
    static void OnSet(vst2::Effect* effect, std::int32_t index, float value) {
        Changing& self = Of(effect);
        self.Check(index);
        self.SetParameter(index, value);
        if (index != 0) return;
        effect->parameterCount = value > 0.9f   ? static_cast<std::int32_t>(self.mValues.size())
                                 : value > 0.5f ? kFew
                                                : kUsual;
        self.mHost(effect, vst2::kHostUpdateDisplay, 0, 0, nullptr, 0.0f);
    }
    static float OnGet(vst2::Effect* effect, std::int32_t index) {
        Of(effect).Check(index);
        return Of(effect).GetParameter(index);
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Changing(host))->GetEffect(); }
