#include "CandidateSearch.h"

#include <algorithm>
#include <unordered_set>

#include <zelcore/File.h>

#include "LocatorHash.h"
#include "PluginFolders.h"

namespace zelaudiofilterhost {

std::vector<PluginLocator> SearchCandidates(TechnologyType technology, const ustring& directory,
                                            const std::function<CandidateVerdict(const WalkEntry&)>& judge) {
    std::vector<PluginLocator> candidates;
    std::unordered_set<PluginLocator, LocatorHash> found;
    WalkFolder(directory, [&](const WalkEntry& entry) {
        const CandidateVerdict verdict = judge(entry);
        if (verdict == kCandidate) {
            const PluginLocator locator(technology, entry.path);
            if (found.insert(locator).second) candidates.push_back(locator);
        }
        return verdict == kNoCandidate;
    });
    return candidates;
}

bool HasExtension(const ustring& name, const ustring& extension) {
    return name.size() > extension.size() && IsSameName(name.substr(name.size() - extension.size()), extension);
}

ustring LastName(const ustring& path) { return zelcore::filesupport::File(path).GetName(); }

bool IsBelowExtension(const ustring& path, const ustring& extension) {
    const auto isSeparator = [](ustring::value_type unit) { return unit == '/' || unit == '\\'; };
    auto begin = path.begin();
    for (auto end = begin; (end = std::find_if(begin, path.end(), isSeparator)) != path.end(); begin = end + 1) {
        if (HasExtension(ustring(begin, end), extension)) return true;
    }
    return false;
}

}  // namespace zelaudiofilterhost
