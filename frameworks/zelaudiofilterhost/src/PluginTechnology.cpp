#include <zelaudiofilterhost/PluginTechnology.h>

#include <algorithm>

#include <zelcore/Dir.h>

#include "PluginFolders.h"

namespace zelaudiofilterhost {

namespace {

/// Appends what is a full path and not in the list yet, without separators at its end.
void AppendNew(std::vector<ustring>& list, const std::vector<ustring>& directories) {
    for (const ustring& directory : directories) {
        if (!IsFullPath(directory)) continue;
        const ustring path = zelcore::filesupport::Dir(directory).FullPath();
        if (std::find(list.begin(), list.end(), path) == list.end()) list.push_back(path);
    }
}

}  // namespace

PluginTechnology::PluginTechnology() = default;

PluginTechnology::~PluginTechnology() = default;

PluginTechnology::DirectoryIterator PluginTechnology::DirectoryBegin() const { return mDirectories.begin(); }

PluginTechnology::DirectoryIterator PluginTechnology::DirectoryEnd() const { return mDirectories.end(); }

void PluginTechnology::AddPluginDirectories(const std::vector<ustring>& directories) {
    const std::size_t before = mDirectories.size();
    AppendNew(mDirectories, directories);
    if (mDirectories.size() != before) mDirectoriesChanged();
}

void PluginTechnology::RemovePluginDirectories(const std::vector<ustring>& directories) {
    std::vector<ustring> unwanted;
    AppendNew(unwanted, directories);
    const auto isUnwanted = [&unwanted](const ustring& directory) {
        return std::find(unwanted.begin(), unwanted.end(), directory) != unwanted.end();
    };
    if (std::erase_if(mDirectories, isUnwanted) != 0) mDirectoriesChanged();
}

void PluginTechnology::ResetToDefaultDirectories() { SetPluginDirectories(GetDefaultDirectories()); }

void PluginTechnology::SetPluginDirectories(const std::vector<ustring>& directories) {
    std::vector<ustring> list;
    AppendNew(list, directories);
    if (list == mDirectories) return;
    mDirectories.swap(list);
    mDirectoriesChanged();
}

PluginTechnology::DirectoriesChangedSignal& PluginTechnology::GetDirectoriesChangedSignal() {
    return mDirectoriesChanged;
}

}  // namespace zelaudiofilterhost
