#include "TechnologyVST3.h"

#include <zelcore/Utf.h>

#include "CandidateSearch.h"
#include "PluginFolders.h"

namespace zelaudiofilterhost {

TechnologyType TechnologyVST3::GetType() const { return kTechnologyVST3; }

ustring TechnologyVST3::GetName() const { return zelcore::utility::AsciiToUTF16("VST3"); }

std::vector<ustring> TechnologyVST3::GetDefaultDirectories() const { return DefaultPluginFolders(kTechnologyVST3); }

std::vector<PluginLocator> TechnologyVST3::FindPlugins(const ustring& directory) const {
    const ustring bundle = zelcore::utility::AsciiToUTF16(".vst3");
    return SearchCandidates(kTechnologyVST3, directory, [&](const WalkEntry& entry) {
        if (HasExtension(entry.name, bundle)) return kCandidate;
        return entry.isFolder && HasExtension(LastName(entry.path), bundle) ? kCandidate : kNoCandidate;
    });
}

}  // namespace zelaudiofilterhost
