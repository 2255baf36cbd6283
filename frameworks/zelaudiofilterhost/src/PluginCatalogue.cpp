#include "PluginCatalogue.h"

#include <algorithm>
#include <utility>

#include "CatalogueText.h"

namespace zelaudiofilterhost {

namespace {

/// Moves the elements behind the holes together, from `first` on, and tells each slot its new position through `tell`.
template <typename Elements, typename Slots, typename Tell>
void Close(Elements& elements, Slots& slots, std::size_t& first, std::size_t nowhere, const Tell& tell) {
    if (first == nowhere) return;
    std::size_t kept = first;
    for (std::size_t position = first; position < slots.size(); ++position) {
        if (slots[position] == nullptr) continue;
        if (kept != position) {
            elements[kept] = std::move(elements[position]);
            slots[kept] = slots[position];
        }
        tell(*slots[kept], kept);
        ++kept;
    }
    elements.resize(kept);
    slots.resize(kept);
    first = nowhere;
}

}  // namespace

boost::intrusive_ptr<PluginModuleInfo> PluginCatalogue::FindInfo(const PluginLocator& locator) const {
    const auto found = mEntries.find(locator);
    if (found == mEntries.end() || !found->second.HasInfo()) return nullptr;
    return mInfos[found->second.infoPosition];
}

const PluginScanFailure* PluginCatalogue::FindFailure(const PluginLocator& locator) const {
    const auto found = mEntries.find(locator);
    if (found == mEntries.end() || !found->second.HasFailure()) return nullptr;
    return &mFailures[found->second.failurePosition];
}

bool PluginCatalogue::IsUsable(const PluginLocator& locator) {
    if (locator.GetTechnologyType() < kTechnologyBuiltIn || locator.GetTechnologyType() > kTechnologyAU) return false;
    const std::size_t length = locator.GetPath().size() + locator.GetSubcomponent().size();
    return !locator.GetPath().empty() && length <= PluginLocator::kMaxTextLength;
}

void PluginCatalogue::PutInfo(const boost::intrusive_ptr<PluginModuleInfo>& info, ChoicePrecedence precedence) {
    if (!info || !IsUsable(info->GetLocator())) return;
    bool enabled = true;
    if (precedence == kKnownChoice && FindChoice(info->GetLocator(), enabled)) info->SetEnabled(enabled);

    Slot& slot = SlotOf(info->GetLocator());
    Entry& entry = slot.second;
    if (entry.HasInfo()) {
        mInfos[entry.infoPosition] = info;
    } else {
        Detach(slot, false);
        CloseHoles();
        entry.infoPosition = mInfos.size();
        mInfos.push_back(info);
        mInfoSlots.push_back(&slot);
    }
    MarkUnsaved(slot);
}

void PluginCatalogue::PutFailure(const PluginScanFailure& failure) {
    if (!IsUsable(failure.locator)) return;
    Slot& slot = SlotOf(failure.locator);
    Entry& entry = slot.second;
    if (entry.HasFailure()) {
        mFailures[entry.failurePosition] = failure;
    } else {
        Detach(slot, true);
        CloseHoles();
        entry.failurePosition = mFailures.size();
        mFailures.push_back(failure);
        mFailureSlots.push_back(&slot);
    }
    MarkUnsaved(slot);
}

void PluginCatalogue::PutChoice(const PluginLocator& locator, bool enabled) {
    if (!IsUsable(locator)) return;
    Slot& slot = SlotOf(locator);
    Detach(slot, false);
    CloseHoles();
    slot.second.isDisabled = !enabled;
    MarkUnsaved(slot);
}

void PluginCatalogue::SetChoice(const PluginLocator& locator, bool enabled) {
    if (!IsUsable(locator)) return;
    Slot& slot = SlotOf(locator);
    if (slot.second.HasInfo()) {
        mInfos[slot.second.infoPosition]->SetEnabled(enabled);
    } else {
        slot.second.isDisabled = !enabled;
    }
    MarkUnsaved(slot);
}

bool PluginCatalogue::FindChoice(const PluginLocator& locator, bool& enabled) const {
    const auto found = mEntries.find(locator);
    if (found == mEntries.end()) return false;
    const Entry& entry = found->second;
    // An absent plug-in of which no choice is noted may be new to the user: nothing is known then.
    if (!entry.HasInfo() && !entry.isDisabled) return false;
    enabled = entry.HasInfo() ? mInfos[entry.infoPosition]->IsEnabled() : false;
    return true;
}

void PluginCatalogue::Remove(const std::vector<PluginLocator>& locators, bool keepChoices) {
    for (const PluginLocator& locator : locators) {
        const auto found = mEntries.find(locator);
        if (found == mEntries.end()) continue;
        Detach(*found, keepChoices);
        MarkUnsaved(*found);
    }
    CloseHoles();
}

void PluginCatalogue::SetLine(const PluginLocator& locator, std::string line) {
    const auto found = mEntries.find(locator);
    if (found != mEntries.end()) found->second.line = std::move(line);
}

void PluginCatalogue::NoteChange(const PluginModuleInfo& info) {
    const auto found = mEntries.find(info.GetLocator());
    if (found == mEntries.end() || !found->second.HasInfo()) return;
    if (mInfos[found->second.infoPosition].get() == &info) MarkUnsaved(*found);
}

std::size_t PluginCatalogue::AppendUnsavedLines(std::string& out) const {
    // In the order in which a reader must take them to arrive at the order in memory.
    std::vector<const Slot*> slots(mUnsaved.begin(), mUnsaved.end());
    std::sort(slots.begin(), slots.end(),
              [this](const Slot* left, const Slot* right) { return ComesBefore(*left, *right); });
    std::size_t lines = 0;
    for (const Slot* slot : slots) {
        const Entry& entry = slot->second;
        if (entry.isOnFile && (entry.hasLeft || entry.IsEmpty())) {
            AppendRemovedLine(out, slot->first);
            ++lines;
        }
        if (entry.IsEmpty()) continue;
        AppendSlot(out, *slot);
        ++lines;
    }
    return lines;
}

std::size_t PluginCatalogue::AppendAllLines(std::string& out) const {
    for (const Slot* slot : mInfoSlots) AppendSlot(out, *slot);
    for (const Slot* slot : mFailureSlots) AppendSlot(out, *slot);
    std::vector<const Slot*> choices;
    for (const Slot& slot : mEntries) {
        if (!slot.second.HasInfo() && !slot.second.HasFailure() && slot.second.isDisabled) choices.push_back(&slot);
    }
    std::sort(choices.begin(), choices.end(),
              [](const Slot* left, const Slot* right) { return left->first < right->first; });
    for (const Slot* slot : choices) AppendSlot(out, *slot);
    return mInfoSlots.size() + mFailureSlots.size() + choices.size();
}

void PluginCatalogue::AppendLine(std::string& out, const PluginLocator& locator) const {
    const auto found = mEntries.find(locator);
    if (found != mEntries.end() && !found->second.IsEmpty()) AppendSlot(out, *found);
}

void PluginCatalogue::SetSaved() {
    for (Slot* slot : mUnsaved) {
        Entry& entry = slot->second;
        entry.isUnsaved = entry.hasLeft = false;
        entry.isOnFile = true;
        if (entry.IsEmpty()) mEntries.erase(mEntries.find(slot->first));
    }
    mUnsaved.clear();
}

PluginCatalogue::Slot& PluginCatalogue::SlotOf(const PluginLocator& locator) {
    return *mEntries.try_emplace(locator).first;
}

void PluginCatalogue::MarkUnsaved(Slot& slot) {
    slot.second.line.clear();
    if (slot.second.isUnsaved) return;
    mUnsaved.push_back(&slot);
    slot.second.isUnsaved = true;
}

void PluginCatalogue::Detach(Slot& slot, bool keepChoice) {
    Entry& entry = slot.second;
    if (entry.HasInfo()) {
        entry.isDisabled = !mInfos[entry.infoPosition]->IsEnabled();
        mInfoSlots[entry.infoPosition] = nullptr;
        mFirstInfoHole = std::min(mFirstInfoHole, entry.infoPosition);
        entry.infoPosition = kNowhere;
        entry.hasLeft = true;
    }
    if (entry.HasFailure()) {
        mFailureSlots[entry.failurePosition] = nullptr;
        mFirstFailureHole = std::min(mFirstFailureHole, entry.failurePosition);
        entry.failurePosition = kNowhere;
        entry.hasLeft = true;
    }
    if (!keepChoice) entry.isDisabled = false;
}

void PluginCatalogue::CloseHoles() {
    Close(mInfos, mInfoSlots, mFirstInfoHole, kNowhere,
          [](Slot& slot, std::size_t position) { slot.second.infoPosition = position; });
    Close(mFailures, mFailureSlots, mFirstFailureHole, kNowhere,
          [](Slot& slot, std::size_t position) { slot.second.failurePosition = position; });
}

void PluginCatalogue::AppendSlot(std::string& out, const Slot& slot) const {
    if (slot.second.line.empty()) slot.second.line = MakeLine(slot);
    out += slot.second.line;
}

std::string PluginCatalogue::MakeLine(const Slot& slot) const {
    std::string line;
    const Entry& entry = slot.second;
    if (entry.HasInfo()) {
        AppendModuleLine(line, *mInfos[entry.infoPosition]);
    } else if (entry.HasFailure()) {
        AppendFailedLine(line, mFailures[entry.failurePosition], entry.isDisabled);
    } else {
        AppendChoiceLine(line, slot.first);
    }
    line.shrink_to_fit();
    return line;
}

bool PluginCatalogue::ComesBefore(const Slot& left, const Slot& right) const {
    const auto rank = [](const Entry& entry) {
        return entry.HasInfo()      ? std::pair<int, std::size_t>(1, entry.infoPosition)
               : entry.HasFailure() ? std::pair<int, std::size_t>(2, entry.failurePosition)
                                    : std::pair<int, std::size_t>(0, 0);
    };
    const auto leftRank = rank(left.second), rightRank = rank(right.second);
    return leftRank != rightRank ? leftRank < rightRank : left.first < right.first;
}

}  // namespace zelaudiofilterhost
