#pragma once

#include <unordered_set>
#include <vector>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>

#include "CatalogueStore.h"
#include "LocatorHash.h"
#include "PluginCatalogue.h"

namespace zelaudiofilterhost {

class PluginModuleInfoManager::Impl {
public:
    typedef std::vector<boost::intrusive_ptr<PluginTechnology>> Technologies;

    Impl();

    PluginTechnology* FindTechnology(TechnologyType type) const;
    CatalogueStore::FolderLists GetFolderLists() const;
    /// The same as the records of a file have it: the list of a technology that the file leaves out names none, so that
    /// it differs from any. Without lists at all there are none.
    CatalogueStore::FolderLists FolderListsOf(const std::vector<CatalogueRecord>& records) const;
    /// Puts the folder lists of records into the technologies; those that are not listed get their default ones if
    /// `resetOthers`.
    void TakeFolders(const std::vector<CatalogueRecord>& records, bool resetOthers);

    /// The catalogue that a file's records amount to. Takes their lines out of them.
    static PluginCatalogue CatalogueOf(std::vector<CatalogueRecord>& records);
    /// Puts what was recovered of a damaged file, which is kept aside by now, in its place, so that the next start
    /// finds it.
    void SaveRecovered(const zelcore::filesupport::File& file);
    /// Takes records from elsewhere up: choices that are known here stay. Those of the records count only if
    /// `withChoices`.
    void AddRecords(const std::vector<CatalogueRecord>& records, bool withChoices);

    /// Appends the candidates below `folder` that are not in `seen`.
    void Collect(const PluginTechnology& technology, const ustring& folder, bool onlyNewOrChanged,
                 std::unordered_set<PluginLocator, LocatorHash>& seen, std::vector<PluginLocator>& candidates) const;
    bool IsNewOrChanged(const PluginLocator& locator) const;

    PluginCatalogue catalogue;
    CatalogueStore store;
    Technologies technologies;
    PluginInfosChangedSignal infosChanged;
};

}  // namespace zelaudiofilterhost
