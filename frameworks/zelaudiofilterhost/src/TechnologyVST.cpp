#include "TechnologyVST.h"

#include <zelcore/Utf.h>

#include "CandidateSearch.h"
#include "PluginFolders.h"

namespace zelaudiofilterhost {

TechnologyType TechnologyVST::GetType() const { return kTechnologyVST; }

ustring TechnologyVST::GetName() const { return zelcore::utility::AsciiToUTF16("VST"); }

std::vector<ustring> TechnologyVST::GetDefaultDirectories() const { return DefaultPluginFolders(kTechnologyVST); }

std::vector<PluginLocator> TechnologyVST::FindPlugins(const ustring& directory) const {
    const ustring module = VstModuleExtension();
    const ustring foreign[] = {zelcore::utility::AsciiToUTF16(".vst3"), zelcore::utility::AsciiToUTF16(".lv2")};
    return SearchCandidates(kTechnologyVST, directory, [&](const WalkEntry& entry) {
        if (!entry.isFolder && !HasExtension(entry.name, module)) return kNoCandidate;
        for (const ustring& bundle : foreign) {
            const bool isInside = !entry.isFolder && IsBelowExtension(entry.path, bundle);
            const bool isBundle =
                entry.isFolder && (HasExtension(entry.name, bundle) || HasExtension(LastName(entry.path), bundle));
            if (isInside || isBundle) return kForbidden;
        }
        return entry.isFolder ? kNoCandidate : kCandidate;
    });
}

}  // namespace zelaudiofilterhost
