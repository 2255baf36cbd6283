#include "Vst3Parameters.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <new>
#include <set>

#include <zelaudiofilterhost/PluginComponentInfo.h>

#include "PluginCall.h"
#include "PluginText.h"

namespace zelaudiofilterhost {

namespace Vst = Steinberg::Vst;

namespace {

/// Grows with the parameters that are really set; the number that the plug-in claims costs nothing.
constexpr std::size_t kFirstRoom = 64;

double Normalized(double value) { return std::isnan(value) ? 0.0 : std::clamp(value, 0.0, 1.0); }

}  // namespace

Vst3Parameters::Vst3Parameters(Vst::IEditController* controller) : mController(controller) {
    mToProcessor.Reserve(kFirstRoom);
}

int Vst3Parameters::AskCount() const {
    int count = 0;
    if (mController != nullptr) CallPluginQuietly([&] { count = mController->getParameterCount(); });
    return std::clamp(count, 0, PluginComponentInfo::kMaxParameters);
}

bool Vst3Parameters::AskInfo(int position, Vst::ParameterInfo& info) const {
    bool found = false;
    CallPluginQuietly([&] { found = mController->getParameterInfo(position, info) == Steinberg::kResultOk; });
    return found;
}

// One that says nothing of itself has its place among the others: it may come to.
void Vst3Parameters::ListShown() const {
    const int count = AskCount();
    if (count == mListedCount) return;
    mShown.clear();
    for (int position = 0; position < count; ++position) {
        Vst::ParameterInfo info = {};
        const bool hidden = AskInfo(position, info) && (info.flags & Vst::ParameterInfo::kIsHidden) != 0;
        if (!hidden) mShown.push_back(position);
    }
    mListedCount = count;
}

int Vst3Parameters::GetCount() const {
    ListShown();
    return static_cast<int>(mShown.size());
}

boost::intrusive_ptr<AudioFilterParameterInfo> Vst3Parameters::GetInfo(int index) const {
    Vst::ParameterInfo info = {};
    if (!Find(index, info)) info = {};
    ustring name = CleanPluginText(info.title, std::size(info.title));
    if (name.empty()) name = CleanPluginText(info.shortTitle, std::size(info.shortTitle));
    return boost::intrusive_ptr<AudioFilterParameterInfo>(
        new AudioFilterParameterInfo(name, CleanPluginText(info.units, std::size(info.units))));
}

float Vst3Parameters::GetValue(int index) {
    TakeFromProcessor();
    Vst::ParameterInfo info = {};
    return Find(index, info) ? static_cast<float>(Ask(info.id)) : 0.0f;
}

ustring Vst3Parameters::GetValueString(int index) {
    TakeFromProcessor();
    Vst::ParameterInfo info = {};
    if (!Find(index, info)) return ustring();
    Vst::String128 text = {};
    bool hasText = false;
    CallPluginQuietly([&] {
        const double value = Normalized(mController->getParamNormalized(info.id));
        hasText = mController->getParamStringByValue(info.id, value, text) == Steinberg::kResultOk;
    });
    return hasText ? CleanPluginText(text, std::size(text)) : ustring();
}

void Vst3Parameters::SetValue(int index, float value) {
    Vst::ParameterInfo info = {};
    if (std::isnan(value) || !Find(index, info)) return;
    // A meter is the plug-in's own to move.
    if ((info.flags & Vst::ParameterInfo::kIsReadOnly) != 0) return;
    // What the processor told before is older.
    TakeFromProcessor();
    const double normalized = Normalized(value);
    if (Tell(info.id, normalized)) OnEdited(info.id, normalized);
}

void Vst3Parameters::OnEdited(Vst::ParamID id, double value) {
    if (std::isnan(value)) return;
    const double normalized = Normalized(value);
    if (mToProcessor.Put(id, normalized)) return;
    try {
        mToProcessor.Reserve(2 * mToProcessor.GetCapacity());
    } catch (const std::bad_alloc&) {
        return;
    }
    mToProcessor.Put(id, normalized);
}

template <typename Function>
void Vst3Parameters::ForEachSettable(Function function) const {
    const int count = AskCount();
    for (int position = 0; position < count; ++position) {
        Vst::ParameterInfo info = {};
        if (AskInfo(position, info) && (info.flags & Vst::ParameterInfo::kIsReadOnly) == 0) function(info.id);
    }
}

Vst3Parameters::Values Vst3Parameters::GetAll() const {
    Values values;
    ForEachSettable([&](Vst::ParamID id) { values.emplace_back(id, Ask(id)); });
    return values;
}

Vst3Parameters::Values Vst3Parameters::GetWaiting() const {
    Values values;
    mToProcessor.ForEachWaiting([&](Vst::ParamID id, double value) { values.emplace_back(id, value); });
    return values;
}

void Vst3Parameters::SetAll(const Values& values) {
    if (values.empty()) return;
    std::set<Vst::ParamID> known;
    ForEachSettable([&](Vst::ParamID id) { known.insert(id); });
    for (const auto& [id, value] : values) {
        if (known.contains(id) && Tell(id, value)) OnEdited(id, value);
    }
}

void Vst3Parameters::Renew() {
    if (mController == nullptr) return;
    mFromProcessor.Take(mFromProcessor.GetCapacity(), [](Vst::ParamID, double) {});
    // Without blocks this side may receive. The processor has its values already; a controller that learned nothing of
    // them would only undo them.
    mToProcessor.Take(mToProcessor.GetCapacity(), [](Vst::ParamID, double) {});
    mShown.clear();
    mListedCount = 0;
}

bool Vst3Parameters::Find(int index, Vst::ParameterInfo& info) const {
    if (index < 0 || index >= GetCount()) return false;
    return AskInfo(mShown[static_cast<std::size_t>(index)], info);
}

double Vst3Parameters::Ask(Vst::ParamID id) const {
    double value = 0.0;
    CallPluginQuietly([&] { value = mController->getParamNormalized(id); });
    return Normalized(value);
}

bool Vst3Parameters::Tell(Vst::ParamID id, double value) {
    bool told = false;
    CallPluginQuietly([&] {
        // The answer is no use: there are controllers that take the value and refuse in the same breath.
        mController->setParamNormalized(id, value);
        told = true;
    });
    return told;
}

void Vst3Parameters::TakeFromProcessor() {
    if (mController == nullptr) return;
    mFromProcessor.Take(mFromProcessor.GetCapacity(), [this](Vst::ParamID id, double value) {
        // What is on its way to the processor is newer than what comes back from it.
        if (!std::isnan(value) && !mToProcessor.IsWaiting(id)) Tell(id, Normalized(value));
    });
}

}  // namespace zelaudiofilterhost
