#pragma once

#include <vector>

#include <zelcore/RefCountedObject.h>
#include <zelcore/Signals.h>

#include <zelaudiofilterhost/PluginLocator.h>

namespace zelaudiofilterhost {

/// One plug-in format and the folders in which its plug-ins are looked for. Owned by the catalogue. Main thread.
class ZELAUDIOFILTERHOST_API PluginTechnology : public zelcore::utility::RefCountedObject {
public:
    /// Goes through the folders.
    typedef std::vector<ustring>::const_iterator DirectoryIterator;
    /// Told nothing: the folders are as they are now.
    typedef boost::signal<void()> DirectoriesChangedSignal;

    /// The format's number.
    virtual TechnologyType GetType() const = 0;
    /// "VST", "VST3" or "AU".
    virtual ustring GetName() const = 0;

    /// The folders, as full paths, in the order in which they are searched.
    DirectoryIterator DirectoryBegin() const;
    /// The end of what DirectoryBegin began.
    DirectoryIterator DirectoryEnd() const;
    /// Appends folders that are not in the list yet. Relative and empty paths are ignored. Fires the signal once if
    /// anything changed; so do the next two.
    void AddPluginDirectories(const std::vector<ustring>& directories);
    /// Takes folders out of the list; those that are not in it are ignored.
    void RemovePluginDirectories(const std::vector<ustring>& directories);
    /// Makes the list that of GetDefaultDirectories.
    void ResetToDefaultDirectories();
    /// Replaces the list, as when a configuration is loaded.
    void SetPluginDirectories(const std::vector<ustring>& directories);
    /// Fired after the list has changed.
    DirectoriesChangedSignal& GetDirectoriesChangedSignal();

    /// The conventional folders of this platform and user, those of environment variables first.
    virtual std::vector<ustring> GetDefaultDirectories() const = 0;

    /// The candidates below `directory`, searched recursively, in a stable order: each plug-in once, by the path that
    /// its links lead to. What cannot be read is passed over. Loads nothing.
    virtual std::vector<PluginLocator> FindPlugins(const ustring& directory) const = 0;

protected:
    PluginTechnology();
    ~PluginTechnology() override;

private:
    std::vector<ustring> mDirectories;
    DirectoriesChangedSignal mDirectoriesChanged;
};

}  // namespace zelaudiofilterhost
