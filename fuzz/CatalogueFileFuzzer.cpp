// The catalogue's file, whatever is in it: it is loaded, changed, saved and loaded again, and nothing gets lost. The
// first byte says what is changed.
#include <string>
#include <vector>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/FileUtils.h>

#include "support/Expect.h"
#include "support/FuzzInput.h"
#include "support/ScratchFolder.h"

using namespace zelaudiofilterhost;
using zelcore::filesupport::File;
using zelfuzz::Expect;
using zelfuzz::FuzzInput;

namespace {

constexpr std::size_t kMaxText = 1 << 20;

PluginModuleInfoManager& Catalogue() { return PluginModuleInfoManager::GetInstance(); }

/// All of the catalogue, as a file that is written anew has it.
std::string GetState(const File& probe) {
    Catalogue().SaveConfiguration(probe, true);
    return zelcore::utility::FileUtils::ReadFileToString(probe, kMaxText);
}

/// The ways to change an entry; kMove takes it away and puts it back, which is then behind the others.
enum Way { kStay, kRemove, kMove, kTurn, kChoose, kWays };

void ChangeInfo(const boost::intrusive_ptr<PluginModuleInfo>& info, unsigned way) {
    if (way == kChoose) info->SetEnabled(!info->IsEnabled());
    if (way == kRemove || way == kMove) Catalogue().RemovePluginLocators({info->GetLocator()});
    if (way == kMove) Catalogue().AddPluginInfo(info);
    if (way == kTurn) Catalogue().AddFailure({info->GetLocator(), info->GetFingerprint(), info->GetName()});
}

void ChangeFailure(const PluginScanFailure& failure, unsigned way) {
    if (way == kRemove || way == kMove) Catalogue().RemovePluginLocators({failure.locator});
    if (way == kMove) Catalogue().AddFailure(failure);
    if (way != kTurn) return;
    Catalogue().AddPluginInfo(
        new PluginModuleInfo(failure.locator, failure.reason, failure.fingerprint, {PluginComponentInfo()}));
}

/// Each entry in another way, from the end, so that the order is not what it was.
void Change(unsigned what) {
    std::vector<boost::intrusive_ptr<PluginModuleInfo>> infos(Catalogue().PluginInfoBegin(),
                                                              Catalogue().PluginInfoEnd());
    std::vector<PluginScanFailure> failures(Catalogue().FailureBegin(), Catalogue().FailureEnd());
    const unsigned step = what / kWays;
    for (; !infos.empty(); infos.pop_back(), what += step) ChangeInfo(infos.back(), what % kWays);
    for (; !failures.empty(); failures.pop_back(), what += step) ChangeFailure(failures.back(), what % kWays);
    if (step % 4 == 3) Catalogue().ResetToDefaultFolders();
}

void CheckOutcome(PluginModuleInfoManager::LoadOutcome outcome, const File& file) {
    const bool isRead = outcome == PluginModuleInfoManager::kLoaded;
    const bool isSaved = outcome == PluginModuleInfoManager::kRecovered;
    Expect(outcome != PluginModuleInfoManager::kMissing, "the file is there");
    Expect(file.Exists() == (isRead || isSaved), "a file that was not understood is kept aside");
    if (outcome != PluginModuleInfoManager::kKeptAside) return;
    Expect(Catalogue().PluginInfoBegin() == Catalogue().PluginInfoEnd(), "nothing is taken from what is no catalogue");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const zelfuzz::ScratchFolder folder;
    static const File file = folder.GetFile("catalogue.xml"), probe = folder.GetFile("probe.xml");
    FuzzInput input(bytes, size);
    const unsigned what = input.TakeByte();
    folder.Clear();
    folder.Write("catalogue.xml", input.TakeRest());

    CheckOutcome(Catalogue().LoadConfiguration(file), file);
    Change(what);
    // Adds to the file that is there; the probe is written whole.
    Catalogue().SaveConfiguration(file, true);
    const std::string before = GetState(probe);
    Expect(Catalogue().LoadConfiguration(file) == PluginModuleInfoManager::kLoaded, "what was saved is whole");
    Expect(GetState(probe) == before, "what was saved loads the same");
    return 0;
}
