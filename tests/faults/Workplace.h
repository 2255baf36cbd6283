#pragma once

#include <set>
#include <string>
#include <vector>

#include "HostReport.h"
#include "support/ThrowAwayFolder.h"

namespace zelfaults {

/// The folders of all rounds: plug-ins to scan, a profile with a history that each round gets a copy of, a small disk.
///
/// Of each folder of plug-ins, two are known to the profile, and one of these is switched off.
class Workplace {
public:
    /// `isSecluded`: a small disk may be mounted.
    explicit Workplace(bool isSecluded);

    /// All good but one that does not load; the same with some that take the scanner down.
    std::string GetGoodFolder() const { return mFolder.Path("good"); }
    std::string GetDeadlyFolder() const { return mFolder.Path("deadly"); }
    static bool IsDeadly(const std::string& path);
    static bool IsGood(const std::string& path);
    /// Full paths of what is in a folder of plug-ins.
    static std::vector<std::string> ListPlugins(const std::string& folder);

    bool HasSmallDisk() const { return mHasSmallDisk; }
    /// A fresh copy of the profile, on the small disk where `small`. The ones before are gone.
    std::string MakeProfile(bool small);
    /// Makes the profile that is copied; run once. False when that fails, which it tells.
    bool Prepare();
    /// What is in it.
    HostReport ReadBase();

    /// A fresh folder for everything else of a round.
    std::string MakeRoundFolder();
    /// Names of the profile's files that should not be there.
    std::vector<std::string> FindLeftovers(const std::string& profile) const;
    /// What is in the system's shared memory now.
    static std::set<std::string> ListSharedMemory();

    std::string GetBaseProfile() const { return mFolder.Path("base"); }

private:
    void AddPlugins(const std::string& folder, const std::vector<std::pair<std::string, std::string>>& plugins) const;

    zeltests::ThrowAwayFolder mFolder;
    bool mHasSmallDisk = false;
};

}  // namespace zelfaults
