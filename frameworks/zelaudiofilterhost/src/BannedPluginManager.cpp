#include <zelaudiofilterhost/BannedPluginManager.h>

#include <algorithm>
#include <mutex>
#include <string>
#include <unordered_map>

#include <zelcore/FileError.h>
#include <zelcore/FileUtils.h>
#include <zelcore/Utf.h>

#include "BanListFile.h"
#include "CatalogueFile.h"
#include "LocatorHash.h"

namespace zelaudiofilterhost {

using zelcore::filesupport::File;
using zelcore::filesupport::FileError;
using zelcore::utility::FileUtils;

class BannedPluginManager::Impl {
public:
    typedef std::unordered_multimap<std::string, PermanentBan> PermanentBans;

    /// The two ends in the list of bans on that path's file. The caller holds `mutex`.
    auto FindPermanent(const PluginLocator& locator) const {
        return permanent.equal_range(FoldFileName(File(locator.GetPath()).GetName()));
    }

    /// Its place in the user's list. The caller holds `mutex`.
    std::vector<BannedPlugin>::iterator FindBanned(const PluginLocator& locator) {
        return std::find_if(banned.begin(), banned.end(),
                            [&locator](const BannedPlugin& plugin) { return plugin.locator == locator; });
    }

    void SetBanned(const std::vector<BannedPlugin>& list) {
        const std::lock_guard<std::mutex> lock(mutex);
        banned.clear();
        reasons.clear();
        for (const BannedPlugin& plugin : list) Add(plugin.locator, plugin.reason);
    }

    /// The caller holds `mutex`.
    void Add(const PluginLocator& locator, ustring reason) {
        if (locator.GetPath().empty()) return;
        if (reason.size() > kMaxBanReason) reason.resize(kMaxBanReason);
        const auto [place, isNew] = reasons.try_emplace(locator, reason);
        if (isNew) {
            banned.push_back({locator, reason});
        } else if (!reason.empty()) {
            place->second = reason;
            FindBanned(locator)->reason = reason;
        }
    }

    // Held while a list is written, so that of two saves at once the later list is the one that stays. Taken before
    // `mutex`, which nobody holds while a file is read or written.
    std::mutex saving;
    std::mutex mutex;
    std::vector<BannedPlugin> banned;
    std::unordered_map<PluginLocator, ustring, LocatorHash> reasons;
    PermanentBans permanent;
    std::vector<PluginLocator> view;  // main thread
};

BannedPluginManager& BannedPluginManager::GetInstance() {
    // Never destroyed: the transport's thread may still ban a plug-in while the process ends.
    static BannedPluginManager* const instance = new BannedPluginManager;
    return *instance;
}

BannedPluginManager::BannedPluginManager() : mImpl(std::make_unique<Impl>()) {}

BannedPluginManager::~BannedPluginManager() = default;

ustring BannedPluginManager::GetSettingsFileName() const {
    return zelcore::utility::AsciiToUTF16("BannedAudioPlugIns.xml");
}

ustring BannedPluginManager::GetPermanentBannedSettingsFileName() const {
    return zelcore::utility::AsciiToUTF16("UnsupportedAudioPlugIns.xml");
}

bool BannedPluginManager::LoadStaticConfiguration(const File& file) {
    std::optional<std::vector<PermanentBan>> list;
    try {
        list = ReadPermanentBanList(FileUtils::ReadFileToString(file, kMaxBanListSize));
    } catch (const FileError&) {
        return false;
    }
    if (!list) return false;
    Impl::PermanentBans bans;
    for (PermanentBan& ban : *list) bans.emplace(ban.fileName, ban);
    const std::lock_guard<std::mutex> lock(mImpl->mutex);
    mImpl->permanent.swap(bans);
    return true;
}

bool BannedPluginManager::LoadConfiguration(const File& file) {
    const std::optional<FileIdentity> identity = IdentifyFile(file.FullPath());
    if (!identity) {
        mImpl->SetBanned({});
        return true;
    }
    std::optional<std::vector<BannedPlugin>> list;
    if (identity->size <= kMaxBanListSize) list = ReadBanList(FileUtils::ReadFileToString(file, kMaxBanListSize));
    if (!list) FileUtils::KeepAside(file, zelcore::utility::AsciiToUTF16(".unreadable"));
    mImpl->SetBanned(list.value_or(std::vector<BannedPlugin>()));
    return list.has_value();
}

void BannedPluginManager::SaveConfiguration(const File& file) const {
    const std::lock_guard<std::mutex> saving(mImpl->saving);
    std::vector<BannedPlugin> list;
    {
        const std::lock_guard<std::mutex> lock(mImpl->mutex);
        list = mImpl->banned;
    }
    FileUtils::WriteStringToFileDurably(file.FullPath(), WriteBanList(list));
}

void BannedPluginManager::AddBannedPlugin(const PluginLocator& locator) { AddBannedPlugin(locator, ustring()); }

void BannedPluginManager::AddBannedPlugin(const PluginLocator& locator, const ustring& reason) {
    const std::lock_guard<std::mutex> lock(mImpl->mutex);
    mImpl->Add(locator, reason);
}

void BannedPluginManager::RemoveBannedPlugin(const PluginLocator& locator) {
    const std::lock_guard<std::mutex> lock(mImpl->mutex);
    if (mImpl->reasons.erase(locator) != 0) mImpl->banned.erase(mImpl->FindBanned(locator));
}

bool BannedPluginManager::IsBanned(const PluginLocator& locator) const {
    const std::lock_guard<std::mutex> lock(mImpl->mutex);
    const PluginLocator module(locator.GetTechnologyType(), locator.GetPath());
    if (mImpl->reasons.contains(locator) || mImpl->reasons.contains(module)) return true;
    const auto [begin, end] = mImpl->FindPermanent(locator);
    return std::any_of(begin, end, [](const auto& ban) { return !ban.second.uniqueId; });
}

bool BannedPluginManager::IsComponentBanned(const PluginLocator& locator, const PluginComponentInfo& component) const {
    const std::lock_guard<std::mutex> lock(mImpl->mutex);
    const auto [begin, end] = mImpl->FindPermanent(locator);
    return std::any_of(begin, end, [&component](const auto& named) {
        const PermanentBan& ban = named.second;
        if (ban.uniqueId != component.uniqueId) return false;
        return !ban.version || *ban.version >= component.versionNumber;
    });
}

ustring BannedPluginManager::GetReason(const PluginLocator& locator) const {
    const std::lock_guard<std::mutex> lock(mImpl->mutex);
    const auto found = mImpl->reasons.find(locator);
    return found == mImpl->reasons.end() ? ustring() : found->second;
}

BannedPluginManager::BannedIterator BannedPluginManager::BannedBegin() {
    const std::lock_guard<std::mutex> lock(mImpl->mutex);
    mImpl->view.clear();
    for (const BannedPlugin& plugin : mImpl->banned) mImpl->view.push_back(plugin.locator);
    return mImpl->view.begin();
}

BannedPluginManager::BannedIterator BannedPluginManager::BannedEnd() { return mImpl->view.end(); }

}  // namespace zelaudiofilterhost
