#pragma once

#include <cstddef>
#include <vector>

#include <zelcore/RefCountedObject.h>

#include <zelaudiofilterhost/PluginLocator.h>

namespace zelaudiofilterhost {

/// Scans a list of plug-ins into the catalogue of this process, one at a step, so that its caller can show which one is
/// next before its code runs. Main thread.
///
///     BeginScan();
///     while (GetCurrentProgressInfo(locator, text, current, total) && ContinueScan()) {}
///     EndScan();
class ZELAUDIOFILTERHOST_API PluginModuleScanner : public zelcore::utility::RefCountedObject {
public:
    /// Will scan `locators` in their order; those on a ban list are left out unless `includeBanned`.
    PluginModuleScanner(const std::vector<PluginLocator>& locators, bool includeBanned);

    /// Before the first step.
    void BeginScan();
    /// Tells which plug-in is next: its locator, a text to show behind its name (empty, or which part of it), its
    /// number counted from 1 and how many there are. False when none is left; the arguments are then unchanged.
    bool GetCurrentProgressInfo(PluginLocator& locator, ustring& text, int& current, int& total) const;
    /// Loads and describes the next plug-in, takes it into the catalogue (or its failure, with the reason) and moves
    /// on. False when it was the last.
    bool ContinueScan();
    /// After the last step, or to leave off before.
    void EndScan();

protected:
    ~PluginModuleScanner() override;

private:
    std::vector<PluginLocator> mLocators;
    bool mIncludeBanned;
    bool mScanning;
    std::size_t mNext;
};

}  // namespace zelaudiofilterhost
