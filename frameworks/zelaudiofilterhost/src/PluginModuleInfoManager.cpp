#include <zelaudiofilterhost/PluginModuleInfoManager.h>

#include <zelcore/Utf.h>

#include "CatalogueText.h"
#include "FolderWalk.h"
#include "PluginModuleInfoManagerImpl.h"

namespace zelaudiofilterhost {

namespace {

/// A scanner describes one plug-in at a time; whoever sends very many wants to keep the main thread busy.
constexpr std::size_t kMaxAddedPlugins = 10000;

}  // namespace

PluginModuleInfoManager& PluginModuleInfoManager::GetInstance() {
    // Never destroyed: infos that outlive the end of main still report to it.
    static PluginModuleInfoManager* const instance = new PluginModuleInfoManager;
    return *instance;
}

PluginModuleInfoManager::PluginModuleInfoManager() : mImpl(std::make_unique<Impl>()) {}

PluginModuleInfoManager::~PluginModuleInfoManager() = default;

std::vector<PluginLocator> PluginModuleInfoManager::CollectPotentialPlugins(bool onlyNewOrChanged,
                                                                            std::vector<PluginLocator>& removed) const {
    removed.clear();
    const auto addIfGone = [&removed](const PluginLocator& locator) {
        const bool hasFile = locator.GetTechnologyType() != kTechnologyBuiltIn;
        if (hasFile && !PathExists(locator.GetPath())) removed.push_back(locator);
    };
    for (const auto& info : mImpl->catalogue.GetInfos()) addIfGone(info->GetLocator());
    for (const PluginScanFailure& failure : mImpl->catalogue.GetFailures()) addIfGone(failure.locator);

    std::vector<PluginLocator> candidates;
    std::unordered_set<PluginLocator, LocatorHash> seen;
    for (const auto& technology : mImpl->technologies) {
        for (auto folder = technology->DirectoryBegin(); folder != technology->DirectoryEnd(); ++folder) {
            mImpl->Collect(*technology, *folder, onlyNewOrChanged, seen, candidates);
        }
    }
    return candidates;
}

std::vector<PluginLocator> PluginModuleInfoManager::CollectPotentialPluginsIn(const std::vector<ustring>& folders,
                                                                              bool onlyNewOrChanged) const {
    std::vector<PluginLocator> candidates;
    std::unordered_set<PluginLocator, LocatorHash> seen;
    for (const auto& technology : mImpl->technologies) {
        for (const ustring& folder : folders) mImpl->Collect(*technology, folder, onlyNewOrChanged, seen, candidates);
    }
    return candidates;
}

void PluginModuleInfoManager::AddPluginInfo(const boost::intrusive_ptr<PluginModuleInfo>& info) {
    mImpl->catalogue.PutInfo(info, PluginCatalogue::kKnownChoice);
}

void PluginModuleInfoManager::AddFailure(const PluginScanFailure& failure) { mImpl->catalogue.PutFailure(failure); }

void PluginModuleInfoManager::RemovePluginLocators(const std::vector<PluginLocator>& locators) {
    mImpl->catalogue.Remove(locators, true);
}

PluginModuleInfoManager::PluginInfoIterator PluginModuleInfoManager::PluginInfoBegin() const {
    return mImpl->catalogue.GetInfos().begin();
}

PluginModuleInfoManager::PluginInfoIterator PluginModuleInfoManager::PluginInfoEnd() const {
    return mImpl->catalogue.GetInfos().end();
}

PluginModuleInfoManager::FailureIterator PluginModuleInfoManager::FailureBegin() const {
    return mImpl->catalogue.GetFailures().begin();
}

PluginModuleInfoManager::FailureIterator PluginModuleInfoManager::FailureEnd() const {
    return mImpl->catalogue.GetFailures().end();
}

boost::intrusive_ptr<PluginModuleInfo> PluginModuleInfoManager::FindPluginInfo(const PluginLocator& locator) const {
    return mImpl->catalogue.FindInfo(locator);
}

ustring PluginModuleInfoManager::GetSettingsFileName() const {
    return zelcore::utility::AsciiToUTF16("AudioPluginCatalogue.xml");
}

PluginModuleInfoManager::LoadOutcome PluginModuleInfoManager::LoadConfiguration(
    const zelcore::filesupport::File& file) {
    CatalogueContent content;
    const CatalogueStore::ReadOutcome outcome = mImpl->store.Read(file, content);
    mImpl->catalogue = Impl::CatalogueOf(content.records);
    // Before the technologies tell of their folders: a listener may save.
    mImpl->store.SetTakenOver(mImpl->FolderListsOf(content.records));
    mImpl->TakeFolders(content.records, true);
    if (outcome == CatalogueStore::kDamaged) mImpl->SaveRecovered(file);
    switch (outcome) {
        case CatalogueStore::kRead:
            return kLoaded;
        case CatalogueStore::kMissing:
            return kMissing;
        case CatalogueStore::kDamaged:
            return kRecovered;
        default:
            return kKeptAside;
    }
}

void PluginModuleInfoManager::SaveConfiguration(const zelcore::filesupport::File& file, bool withFolders) {
    mImpl->store.Save(file, mImpl->catalogue, withFolders ? mImpl->GetFolderLists() : CatalogueStore::FolderLists());
}

bool PluginModuleInfoManager::AddConfiguration(const std::string& text, bool withFolders) {
    if (text.size() > kMaxConfigurationText) return false;
    const CatalogueContent content = ReadCatalogue(text);
    if (!content.isIntact || content.records.size() > kMaxAddedPlugins) return false;
    mImpl->AddRecords(content.records, withFolders);
    if (withFolders) mImpl->TakeFolders(content.records, false);
    return true;
}

std::string PluginModuleInfoManager::GetConfigurationText(const std::vector<PluginLocator>& locators) const {
    std::string text(kCatalogueHeader);
    for (const PluginLocator& locator : locators) mImpl->catalogue.AppendLine(text, locator);
    text += kCatalogueTail;
    return text;
}

ustring PluginModuleInfoManager::GetDisplayStringForLocator(const PluginLocator& locator) const {
    ustring text = locator.GetPath();
    if (locator.GetSubcomponent().empty()) return text;
    text += zelcore::utility::AsciiToUTF16(" (");
    text += locator.GetSubcomponent();
    text.push_back(')');
    return text;
}

PluginModuleInfoManager::PluginInfosChangedSignal& PluginModuleInfoManager::GetPluginInfosChangedSignal() {
    return mImpl->infosChanged;
}

boost::intrusive_ptr<PluginTechnology> PluginModuleInfoManager::GetPluginTechnology(TechnologyType type) const {
    return mImpl->FindTechnology(type);
}

void PluginModuleInfoManager::ResetToDefaultFolders() {
    for (const auto& technology : mImpl->technologies) technology->ResetToDefaultDirectories();
}

}  // namespace zelaudiofilterhost
