#pragma once

#include <memory>
#include <vector>

#include <zelcore/File.h>

#include <zelaudiofilterhost/PluginComponentInfo.h>
#include <zelaudiofilterhost/PluginLocator.h>

namespace zelaudiofilterhost {

/// The plug-ins that are not loaded: the permanent list, shipped with the application, and the user's, to which
/// scanning adds what crashed it. One per process. Any thread, the iterators excepted.
class ZELAUDIOFILTERHOST_API BannedPluginManager {
public:
    /// Goes through banned plug-ins in the order in which they were banned.
    typedef std::vector<PluginLocator>::const_iterator BannedIterator;

    /// The one manager; made when it is first asked for.
    static BannedPluginManager& GetInstance();

    /// File names in the preferences folder.
    ustring GetSettingsFileName() const;
    /// Name of the permanent list's file in the preferences folder.
    ustring GetPermanentBannedSettingsFileName() const;

    /// Replaces the permanent list by the file's. False, and the list in memory as it was, when the file is missing or
    /// is not such a list.
    bool LoadStaticConfiguration(const zelcore::filesupport::File& file);
    /// Replaces the user's list by the file's. A missing file empties it and returns true; one that is not such a list
    /// is kept aside, empties it and returns false.
    bool LoadConfiguration(const zelcore::filesupport::File& file);
    /// Writes the user's list. Throws zelcore::filesupport::FileError.
    void SaveConfiguration(const zelcore::filesupport::File& file) const;

    /// Puts a plug-in on the user's list; one that is on it stays where it is and gets the new reason, if there is one.
    void AddBannedPlugin(const PluginLocator& locator);
    /// The same, with a reason in plain words that is kept with the ban.
    void AddBannedPlugin(const PluginLocator& locator, const ustring& reason);
    /// Takes it off the user's list; one that is not on it is harmless.
    void RemoveBannedPlugin(const PluginLocator& locator);

    /// Whether the plug-in as a whole must not be loaded: on the user's list, or named by the permanent one without an
    /// id.
    bool IsBanned(const PluginLocator& locator) const;
    /// Whether the permanent list names this component by file name, unique id and, where it gives one, a version not
    /// below the component's.
    bool IsComponentBanned(const PluginLocator& locator, const PluginComponentInfo& component) const;
    /// Why it is on the user's list, in plain words; empty when nobody said.
    ustring GetReason(const PluginLocator& locator) const;

    /// The user's list in its order, as it was at the last BannedBegin. Main thread.
    BannedIterator BannedBegin();
    /// The end of what BannedBegin began.
    BannedIterator BannedEnd();

private:
    class Impl;
    BannedPluginManager();
    ~BannedPluginManager();
    BannedPluginManager(const BannedPluginManager&) = delete;
    BannedPluginManager& operator=(const BannedPluginManager&) = delete;

    std::unique_ptr<Impl> mImpl;
};

}  // namespace zelaudiofilterhost
