#include <zelaudiofilterhost/PluginModuleScanner.h>

#include <algorithm>
#include <exception>
#include <new>
#include <string>

#include <zelcore/Utf.h>

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginDescription.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>

#include "PluginCall.h"
#include "ResourceShortage.h"

namespace zelaudiofilterhost {

namespace {

constexpr std::size_t kMaxReasonLength = 1024;

/// Describes the plug-in and makes its entry. Throws PluginLoadError, and whatever else comes out of the plug-in's
/// code.
boost::intrusive_ptr<PluginModuleInfo> ScanModule(const PluginLocator& locator, const PluginFingerprint& fingerprint) {
    PluginDescription description = DescribePlugin(locator);
    if (description.components.empty()) throw PluginLoadError("contains no effects and no instruments");
    std::erase_if(description.components, [&locator](const PluginComponentInfo& component) {
        return BannedPluginManager::GetInstance().IsComponentBanned(locator, component);
    });
    if (description.components.empty()) throw PluginLoadError("on the list of unsupported plug-ins");
    return new PluginModuleInfo(locator, description.name, fingerprint, description.components);
}

/// Why a plug-in is no entry.
struct Verdict {
    std::string reason;
    bool isOfTheMoment = false;  ///< there was no memory, or something else that has little to do with the plug-in
};

/// The entry, or null and the verdict. Plug-ins are other people's code: whatever they throw is about them, not about
/// the scan.
boost::intrusive_ptr<PluginModuleInfo> TryToScan(const PluginLocator& locator, const PluginFingerprint& fingerprint,
                                                 Verdict& verdict) {
    std::string& reason = verdict.reason;
    try {
        return ScanModule(locator, fingerprint);
    } catch (const PluginMemoryError& error) {
        verdict = {error.what(), true};
    } catch (const std::bad_alloc&) {
        verdict = {"there was no memory left to describe it", true};
    } catch (const PluginLoadError& error) {
        reason = error.what();
    } catch (const std::exception& error) {
        reason = std::string("threw an exception while it was loaded: ") + error.what();
    } catch (...) {
        reason = "threw an exception while it was loaded";
    }
    verdict.isOfTheMoment = verdict.isOfTheMoment || IsShortOfResources();
    return nullptr;
}

}  // namespace

PluginModuleScanner::PluginModuleScanner(const std::vector<PluginLocator>& locators, bool includeBanned)
    : mLocators(locators), mIncludeBanned(includeBanned), mScanning(false), mNext(0) {}

PluginModuleScanner::~PluginModuleScanner() = default;

void PluginModuleScanner::BeginScan() {
    if (!mIncludeBanned) {
        std::erase_if(mLocators, [](const PluginLocator& locator) {
            return BannedPluginManager::GetInstance().IsBanned(locator);
        });
    }
    mScanning = true;
    mNext = 0;
}

bool PluginModuleScanner::GetCurrentProgressInfo(PluginLocator& locator, ustring& text, int& current,
                                                 int& total) const {
    if (!mScanning || mNext >= mLocators.size()) return false;
    locator = mLocators[mNext];
    text.clear();
    current = static_cast<int>(mNext + 1);
    total = static_cast<int>(mLocators.size());
    return true;
}

bool PluginModuleScanner::ContinueScan() {
    if (!mScanning || mNext >= mLocators.size()) return false;
    const PluginLocator locator = mLocators[mNext++];
    PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    // Taken before the plug-in is loaded: an update that comes meanwhile is then noticed by the next scan.
    const PluginFingerprint fingerprint = PluginFingerprint::Take(locator.GetPath());
    Verdict verdict;
    if (const auto info = TryToScan(locator, fingerprint, verdict)) {
        catalogue.AddPluginInfo(info);
    } else {
        verdict.reason.resize(std::min(verdict.reason.size(), kMaxReasonLength));
        // One of no file's state is tried again by the next scan.
        const PluginFingerprint judged = verdict.isOfTheMoment ? PluginFingerprint() : fingerprint;
        catalogue.AddFailure({locator, judged, zelcore::utility::UTF8to16(verdict.reason)});
    }
    return mNext < mLocators.size();
}

void PluginModuleScanner::EndScan() { mScanning = false; }

}  // namespace zelaudiofilterhost
