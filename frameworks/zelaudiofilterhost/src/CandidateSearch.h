#pragma once

#include <functional>
#include <vector>

#include <zelaudiofilterhost/PluginLocator.h>

#include "FolderWalk.h"

namespace zelaudiofilterhost {

/// What a technology makes of a file or folder that it comes across.
enum CandidateVerdict {
    kNoCandidate,  ///< a folder is searched, a file passed over
    kCandidate,    ///< is a plug-in; a folder is a bundle and not searched
    kForbidden     ///< is none, and neither is anything in it
};

/// The candidates below `directory` as locators of `technology`, in the order of the walk, each place once.
std::vector<PluginLocator> SearchCandidates(TechnologyType technology, const ustring& directory,
                                            const std::function<CandidateVerdict(const WalkEntry&)>& judge);

/// Whether the name has that ending and something before it: ".vst3" is a folder's whole name, not a bundle's ending.
bool HasExtension(const ustring& name, const ustring& extension);

/// The last name of a path.
ustring LastName(const ustring& path);

/// Whether a folder above the last name of the path has that ending.
bool IsBelowExtension(const ustring& path, const ustring& extension);

}  // namespace zelaudiofilterhost
