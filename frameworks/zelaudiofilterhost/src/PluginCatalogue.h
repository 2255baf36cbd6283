#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include <boost/intrusive_ptr.hpp>

#include <zelaudiofilterhost/PluginModuleInfo.h>
#include <zelaudiofilterhost/PluginScanFailure.h>

#include "LocatorHash.h"

namespace zelaudiofilterhost {

/// The catalogue in memory: what is known of each locator, and which of it the file does not say yet. Looking up,
/// replacing and appending cost the same however much there is; removing costs one pass over a vector of pointers,
/// however many are removed at once.
class PluginCatalogue {
public:
    typedef std::vector<boost::intrusive_ptr<PluginModuleInfo>> Infos;
    typedef std::vector<PluginScanFailure> Failures;

    /// Whose choice counts when both the entry and what replaces it have one.
    enum ChoicePrecedence { kKnownChoice, kNewChoice };

    PluginCatalogue() = default;
    PluginCatalogue(PluginCatalogue&&) = default;
    PluginCatalogue& operator=(PluginCatalogue&&) = default;

    const Infos& GetInfos() const { return mInfos; }
    const Failures& GetFailures() const { return mFailures; }
    boost::intrusive_ptr<PluginModuleInfo> FindInfo(const PluginLocator& locator) const;
    const PluginScanFailure* FindFailure(const PluginLocator& locator) const;

    /// Whether a locator can stand in the catalogue: of a known technology, with a path, and not longer than any is.
    static bool IsUsable(const PluginLocator& locator);

    /// Takes an entry up in place of what is known of its locator; what is not usable is ignored.
    void PutInfo(const boost::intrusive_ptr<PluginModuleInfo>& info, ChoicePrecedence precedence);
    void PutFailure(const PluginScanFailure& failure);
    /// Forgets what is known of the locator but for the choice.
    void PutChoice(const PluginLocator& locator, bool enabled);
    /// Puts the choice alone, whatever else is known of the locator.
    void SetChoice(const PluginLocator& locator, bool enabled);
    /// Whether the user's choice for the locator is known here; it is then put into `enabled`.
    bool FindChoice(const PluginLocator& locator, bool& enabled) const;
    void Remove(const std::vector<PluginLocator>& locators, bool keepChoices);

    /// The line that says what is known of the locator, when the caller has it anyway.
    void SetLine(const PluginLocator& locator, std::string line);

    /// An info's choice has changed. One that is not the catalogue's is ignored.
    void NoteChange(const PluginModuleInfo& info);

    bool HasUnsavedChanges() const { return !mUnsaved.empty(); }
    std::size_t GetUnsavedCount() const { return mUnsaved.size(); }
    /// How many lines the whole catalogue takes; at least, while changes are unsaved.
    std::size_t GetLineCount() const { return mEntries.size(); }
    /// Appends the lines that bring a file up to date, and returns how many there are.
    std::size_t AppendUnsavedLines(std::string& out) const;
    std::size_t AppendAllLines(std::string& out) const;
    /// Appends the line of one locator, if anything is known of it.
    void AppendLine(std::string& out, const PluginLocator& locator) const;
    /// The file now says all of it.
    void SetSaved();

private:
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    struct Entry {
        std::size_t infoPosition = kNowhere;
        std::size_t failurePosition = kNowhere;
        bool isDisabled = false;  ///< the choice while there is no info to hold it
        bool isUnsaved = false;
        bool isOnFile = false;
        bool hasLeft = false;  ///< was taken out of its order since the file was written
        /// What a file says of it; empty until it is needed. Makes a whole save a matter of copying.
        mutable std::string line;

        bool HasInfo() const { return infoPosition != kNowhere; }
        bool HasFailure() const { return failurePosition != kNowhere; }
        bool IsEmpty() const { return !HasInfo() && !HasFailure() && !isDisabled; }
    };
    typedef std::unordered_map<PluginLocator, Entry, LocatorHash> Entries;
    typedef Entries::value_type Slot;

    Slot& SlotOf(const PluginLocator& locator);
    void MarkUnsaved(Slot& slot);
    /// Takes the slot's info or failure out and leaves a hole that Close… closes.
    void Detach(Slot& slot, bool keepChoice);
    void CloseHoles();
    void AppendSlot(std::string& out, const Slot& slot) const;
    std::string MakeLine(const Slot& slot) const;
    bool ComesBefore(const Slot& left, const Slot& right) const;

    Infos mInfos;
    Failures mFailures;
    Entries mEntries;
    // Beside mInfos and mFailures, element for element: whose they are; null where there is a hole.
    std::vector<Slot*> mInfoSlots;
    std::vector<Slot*> mFailureSlots;
    // The first hole since the last pass, so that a removal near the end moves little.
    std::size_t mFirstInfoHole = kNowhere;
    std::size_t mFirstFailureHole = kNowhere;
    std::vector<Slot*> mUnsaved;
};

}  // namespace zelaudiofilterhost
