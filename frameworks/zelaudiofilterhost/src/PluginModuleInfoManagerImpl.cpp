#include "PluginModuleInfoManagerImpl.h"

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelcore/FileError.h>

#include "TechnologyAU.h"
#include "TechnologyVST.h"
#include "TechnologyVST3.h"

namespace zelaudiofilterhost {

namespace {

/// Of several lists for a technology the last one counts; null when there is none.
const CatalogueRecord* LastFolderRecord(const std::vector<CatalogueRecord>& records, TechnologyType technology) {
    const CatalogueRecord* last = nullptr;
    for (const CatalogueRecord& record : records) {
        if (record.kind == CatalogueRecord::kTechnology && record.technology == technology) last = &record;
    }
    return last;
}

}  // namespace

PluginModuleInfoManager::Impl::Impl() {
    technologies.push_back(new TechnologyVST);
    technologies.push_back(new TechnologyVST3);
    technologies.push_back(new TechnologyAU);
    for (const auto& technology : technologies) technology->ResetToDefaultDirectories();
}

PluginTechnology* PluginModuleInfoManager::Impl::FindTechnology(TechnologyType type) const {
    for (const auto& technology : technologies) {
        if (technology->GetType() == type) return technology.get();
    }
    return nullptr;
}

CatalogueStore::FolderLists PluginModuleInfoManager::Impl::GetFolderLists() const {
    CatalogueStore::FolderLists lists;
    for (const auto& technology : technologies) {
        lists.push_back({technology->GetType(), {technology->DirectoryBegin(), technology->DirectoryEnd()}});
    }
    return lists;
}

CatalogueStore::FolderLists PluginModuleInfoManager::Impl::FolderListsOf(
    const std::vector<CatalogueRecord>& records) const {
    CatalogueStore::FolderLists lists;
    bool hasAny = false;
    for (const auto& technology : technologies) {
        const CatalogueRecord* const record = LastFolderRecord(records, technology->GetType());
        hasAny |= record != nullptr;
        lists.push_back(record ? CatalogueStore::FolderList{record->technology, record->folders}
                               : CatalogueStore::FolderList());
    }
    return hasAny ? lists : CatalogueStore::FolderLists();
}

void PluginModuleInfoManager::Impl::TakeFolders(const std::vector<CatalogueRecord>& records, bool resetOthers) {
    for (const auto& technology : technologies) {
        if (const CatalogueRecord* const record = LastFolderRecord(records, technology->GetType())) {
            technology->SetPluginDirectories(record->folders);
        } else if (resetOthers) {
            technology->ResetToDefaultDirectories();
        }
    }
}

PluginCatalogue PluginModuleInfoManager::Impl::CatalogueOf(std::vector<CatalogueRecord>& records) {
    PluginCatalogue result;
    for (CatalogueRecord& record : records) {
        switch (record.kind) {
            case CatalogueRecord::kModule:
                result.PutInfo(record.info, PluginCatalogue::kNewChoice);
                break;
            case CatalogueRecord::kFailed:
                result.PutFailure(record.failure);
                result.SetChoice(record.locator, record.enabled);
                break;
            case CatalogueRecord::kChoice:
                result.PutChoice(record.locator, record.enabled);
                break;
            case CatalogueRecord::kRemoved:
                result.Remove({record.locator}, false);
                break;
            case CatalogueRecord::kTechnology:
                break;
        }
        // An empty line is one that is still to be made.
        result.SetLine(record.locator, std::move(record.line));
    }
    result.SetSaved();
    return result;
}

void PluginModuleInfoManager::Impl::SaveRecovered(const zelcore::filesupport::File& file) {
    try {
        store.Save(file, catalogue, GetFolderLists());
    } catch (const zelcore::filesupport::FileError&) {
        // It is in memory, and the next save tries again and tells.
    }
}

void PluginModuleInfoManager::Impl::AddRecords(const std::vector<CatalogueRecord>& records, bool withChoices) {
    for (const CatalogueRecord& record : records) {
        bool known = true;
        const bool isChoiceKnown = catalogue.FindChoice(record.locator, known);
        const bool takesChoice = withChoices && !isChoiceKnown;
        if (record.kind == CatalogueRecord::kModule) {
            if (!takesChoice) record.info->SetEnabled(true);
            catalogue.PutInfo(record.info, PluginCatalogue::kKnownChoice);
        } else if (record.kind == CatalogueRecord::kFailed) {
            catalogue.PutFailure(record.failure);
            if (takesChoice) catalogue.SetChoice(record.locator, record.enabled);
        } else if (record.kind == CatalogueRecord::kChoice && takesChoice) {
            catalogue.SetChoice(record.locator, record.enabled);
        }
    }
}

void PluginModuleInfoManager::Impl::Collect(const PluginTechnology& technology, const ustring& folder,
                                            bool onlyNewOrChanged, std::unordered_set<PluginLocator, LocatorHash>& seen,
                                            std::vector<PluginLocator>& candidates) const {
    const BannedPluginManager& banned = BannedPluginManager::GetInstance();
    for (const PluginLocator& locator : technology.FindPlugins(folder)) {
        if (!seen.insert(locator).second || banned.IsBanned(locator)) continue;
        if (!onlyNewOrChanged || IsNewOrChanged(locator)) candidates.push_back(locator);
    }
}

bool PluginModuleInfoManager::Impl::IsNewOrChanged(const PluginLocator& locator) const {
    const PluginScanFailure* const failure = catalogue.FindFailure(locator);
    const boost::intrusive_ptr<PluginModuleInfo> info = catalogue.FindInfo(locator);
    if (failure == nullptr && !info) return true;
    const PluginFingerprint& known = info ? info->GetFingerprint() : failure->fingerprint;
    return !(known == PluginFingerprint::Take(locator.GetPath()));
}

}  // namespace zelaudiofilterhost
