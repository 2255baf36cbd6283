#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <zelcore/File.h>

#include <zelaudiofilterhost/PluginTechnology.h>

#include "CatalogueFile.h"
#include "CatalogueReader.h"
#include "PluginCatalogue.h"

namespace zelaudiofilterhost {

/// The catalogue's file as this process last saw it, so that a save can add to it what has changed since.
class CatalogueStore {
public:
    /// A technology's type and folders, as the file lists them.
    struct FolderList {
        TechnologyType technology = kTechnologyNone;
        std::vector<ustring> folders;

        bool operator==(const FolderList&) const = default;
    };
    typedef std::vector<FolderList> FolderLists;

    enum ReadOutcome { kRead, kMissing, kDamaged, kNotUnderstood };

    /// A file above this is not read: no list of plug-ins comes near it.
    static constexpr std::size_t kMaxFileSize = std::size_t(256) << 20;

    /// Reads the file. One that is damaged or not understood is kept aside. Throws zelcore::filesupport::FileError.
    ReadOutcome Read(const zelcore::filesupport::File& file, CatalogueContent& content);
    /// The content of the last Read has been taken over into a catalogue with these folder lists.
    void SetTakenOver(const FolderLists& folders) { mFolders = folders; }

    /// Brings the file up to date and tells the catalogue so; without any `folders` their lines are left out. Throws
    /// zelcore::filesupport::FileError.
    void Save(const zelcore::filesupport::File& file, PluginCatalogue& catalogue, const FolderLists& folders);

private:
    bool CanBeExtended(const zelcore::filesupport::File& file, const PluginCatalogue& catalogue,
                       const FolderLists& folders) const;
    /// False when the file turns out not to be as it was.
    bool Extend(const PluginCatalogue& catalogue, const FolderLists& folders);
    void Rewrite(const zelcore::filesupport::File& file, const PluginCatalogue& catalogue, const FolderLists& folders);
    void Forget();

    ustring mPath;
    std::optional<FileIdentity> mIdentity;
    FolderLists mFolders;
    std::size_t mLineCount = 0;
    std::size_t mLastSize = 0;  // of the last whole text: a good guess for the next
};

}  // namespace zelaudiofilterhost
