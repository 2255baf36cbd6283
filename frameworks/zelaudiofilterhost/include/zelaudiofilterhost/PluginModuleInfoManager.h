#pragma once

#include <memory>
#include <string>
#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <zelcore/File.h>
#include <zelcore/Signals.h>

#include <zelaudiofilterhost/PluginModuleInfo.h>
#include <zelaudiofilterhost/PluginScanFailure.h>
#include <zelaudiofilterhost/PluginTechnology.h>

namespace zelaudiofilterhost {

/// The plug-in catalogue: every working plug-in with the user's choice, what was looked at in vain, and the folders of
/// each technology. One per process. Main thread only.
///
/// The file: XML, one plug-in a line. A save writes only what changed since the last one to or from the same file, so
/// that saving costs little however large the catalogue is; a file that somebody else has touched meanwhile is replaced
/// whole. A crash leaves the state before the save or after it.
class ZELAUDIOFILTERHOST_API PluginModuleInfoManager {
public:
    /// Goes through the working plug-ins.
    typedef std::vector<boost::intrusive_ptr<PluginModuleInfo>>::const_iterator PluginInfoIterator;
    /// Goes through what was looked at in vain.
    typedef std::vector<PluginScanFailure>::const_iterator FailureIterator;
    /// Told nothing: the catalogue is as it is now.
    typedef boost::signal<void()> PluginInfosChangedSignal;

    /// What became of a catalogue file that was loaded.
    enum LoadOutcome {
        kLoaded,     ///< all of it is in memory
        kMissing,    ///< there is no such file: the catalogue is empty, the folders are the default ones
        kRecovered,  ///< it was damaged: what could be read is in memory, the file is kept aside
        kKeptAside   ///< it could not be understood at all: as kMissing, the file is kept aside
    };

    /// The one catalogue; made when it is first asked for.
    static PluginModuleInfoManager& GetInstance();

    /// The candidates in all technologies' folders, each once, without those on a ban list. With `onlyNewOrChanged`
    /// only those that the catalogue does not know, neither as working nor as failed, or whose files have changed
    /// since. Fills `removed` with the catalogue's entries whose files are gone. Changes nothing.
    std::vector<PluginLocator> CollectPotentialPlugins(bool onlyNewOrChanged,
                                                       std::vector<PluginLocator>& removed) const;
    /// The same for the plug-ins below `folders` alone, whichever technology they are of.
    std::vector<PluginLocator> CollectPotentialPluginsIn(const std::vector<ustring>& folders,
                                                         bool onlyNewOrChanged) const;

    /// Takes a plug-in up, in place of what is known of its locator. A choice that the user made for that locator
    /// earlier is applied again.
    void AddPluginInfo(const boost::intrusive_ptr<PluginModuleInfo>& info);
    /// Remembers that a plug-in does not work, in place of what is known of its locator.
    void AddFailure(const PluginScanFailure& failure);
    /// Drops what is known of these plug-ins, as working or as failed. The user's choices for them are remembered, in
    /// the file too, and apply when they come back.
    void RemovePluginLocators(const std::vector<PluginLocator>& locators);

    /// The working plug-ins in the order in which they came. Invalid after any change.
    PluginInfoIterator PluginInfoBegin() const;
    /// The end of what PluginInfoBegin began.
    PluginInfoIterator PluginInfoEnd() const;
    /// What was looked at in vain, in the order in which it came. Invalid after any change.
    FailureIterator FailureBegin() const;
    /// The end of what FailureBegin began.
    FailureIterator FailureEnd() const;
    /// The entry of a locator, or null.
    boost::intrusive_ptr<PluginModuleInfo> FindPluginInfo(const PluginLocator& locator) const;

    /// Name of the catalogue's file in the preferences folder.
    ustring GetSettingsFileName() const;
    /// Replaces everything in memory by the file's content. Fires no signal of the catalogue; the technologies fire
    /// theirs where their folders change. Throws zelcore::filesupport::FileError when the file is there and cannot be
    /// read or put aside; memory is then as it was.
    LoadOutcome LoadConfiguration(const zelcore::filesupport::File& file);
    /// Writes the catalogue; `withFolders` false leaves the folder lists out. Throws zelcore::filesupport::FileError;
    /// memory is unchanged, and the next save tries everything again.
    void SaveConfiguration(const zelcore::filesupport::File& file, bool withFolders);
    /// Adds or replaces the entries of a configuration text, as the scanner process writes it; `withFolders` true takes
    /// its folder lists and its choices too, the latter for plug-ins of which none is known here. A text that is not
    /// one, is above 16 MiB or has more than 10,000 plug-ins changes nothing and returns false.
    bool AddConfiguration(const std::string& text, bool withFolders);
    /// The configuration text of what is known of these plug-ins, without folders.
    std::string GetConfigurationText(const std::vector<PluginLocator>& locators) const;

    /// What a person knows the plug-in by: its path, with the subcomponent behind it in brackets where it has one.
    ustring GetDisplayStringForLocator(const PluginLocator& locator) const;
    /// Fired by whoever changed the catalogue, when the change is complete.
    PluginInfosChangedSignal& GetPluginInfosChangedSignal();

    /// The technology of that type, or null. Their order is VST, VST3, AU.
    boost::intrusive_ptr<PluginTechnology> GetPluginTechnology(TechnologyType type) const;
    /// Gives every technology its conventional folders again.
    void ResetToDefaultFolders();

private:
    friend class PluginModuleInfo;
    class Impl;
    PluginModuleInfoManager();
    ~PluginModuleInfoManager();
    PluginModuleInfoManager(const PluginModuleInfoManager&) = delete;
    PluginModuleInfoManager& operator=(const PluginModuleInfoManager&) = delete;

    std::unique_ptr<Impl> mImpl;
};

}  // namespace zelaudiofilterhost
