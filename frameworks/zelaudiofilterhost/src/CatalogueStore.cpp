#include "CatalogueStore.h"

#include <algorithm>
#include <cerrno>

#include <zelcore/FileError.h>
#include <zelcore/FileUtils.h>
#include <zelcore/Utf.h>

#include "CatalogueText.h"

namespace zelaudiofilterhost {

namespace {

using zelcore::filesupport::File;
using zelcore::utility::FileUtils;

// Outdated lines are harmless but cost reading time. Rewriting when they reach half of the current ones keeps that
// small and a save's cost, spread over the saves between, in proportion to what changed.
constexpr std::size_t kOutdatedLinesAlwaysKept = 256;

}  // namespace

CatalogueStore::ReadOutcome CatalogueStore::Read(const File& file, CatalogueContent& content) {
    content = CatalogueContent();
    const std::optional<FileIdentity> before = IdentifyFile(file.FullPath());
    if (!before) {
        Forget();
        return kMissing;
    }
    if (before->size <= kMaxFileSize) content = ReadCatalogue(FileUtils::ReadFileToString(file, kMaxFileSize));
    if (!content.isIntact) FileUtils::KeepAside(file, zelcore::utility::AsciiToUTF16(".unreadable"));

    Forget();
    if (!content.isCatalogue) return kNotUnderstood;
    if (!content.isIntact) return kDamaged;
    mPath = file.FullPath();
    mLineCount = content.records.size();
    mLastSize = before->size;
    // Had the file changed while it was read, the next save must not build on it.
    if (IdentifyFile(mPath) == before) mIdentity = before;
    return kRead;
}

void CatalogueStore::Save(const File& file, PluginCatalogue& catalogue, const FolderLists& folders) {
    if (!CanBeExtended(file, catalogue, folders) || !Extend(catalogue, folders)) Rewrite(file, catalogue, folders);
    mFolders = folders;
    catalogue.SetSaved();
}

bool CatalogueStore::CanBeExtended(const File& file, const PluginCatalogue& catalogue,
                                   const FolderLists& folders) const {
    if (!mIdentity || file.FullPath() != mPath || IdentifyFile(mPath) != mIdentity) return false;
    if (folders.size() != mFolders.size()) return false;
    const std::size_t current = catalogue.GetLineCount() + folders.size();
    const std::size_t afterwards = mLineCount + catalogue.GetUnsavedCount();
    const std::size_t outdated = afterwards - std::min(afterwards, current);
    return outdated <= std::max(current / 2, kOutdatedLinesAlwaysKept);
}

bool CatalogueStore::Extend(const PluginCatalogue& catalogue, const FolderLists& folders) {
    std::string lines;
    std::size_t count = 0;
    for (std::size_t i = 0; i < folders.size(); ++i) {
        if (folders[i] == mFolders[i]) continue;
        AppendTechnologyLine(lines, folders[i].technology, folders[i].folders);
        ++count;
    }
    count += catalogue.AppendUnsavedLines(lines);
    if (count == 0) return true;

    std::string replacement;
    AppendChangesLine(replacement, count);
    replacement += lines;
    replacement += kCatalogueTail;
    if (!ReplaceTail(mPath, *mIdentity, kCatalogueTail, replacement)) return false;
    mLineCount += count;
    return true;
}

void CatalogueStore::Rewrite(const File& file, const PluginCatalogue& catalogue, const FolderLists& folders) {
    std::string text;
    text.reserve(mLastSize + mLastSize / 8);
    text += kCatalogueHeader;
    for (const FolderList& list : folders) AppendTechnologyLine(text, list.technology, list.folders);
    const std::size_t lines = catalogue.AppendAllLines(text);
    text += kCatalogueTail;
    // What could not be read again must not take the place of what can.
    if (text.size() > kMaxFileSize) throw zelcore::filesupport::FileError("save so large a", file.FullPath(), EFBIG);
    FileUtils::WriteStringToFileDurably(file.FullPath(), text);

    mLastSize = text.size();
    mPath = file.FullPath();
    mIdentity = IdentifyFile(mPath);
    // Somebody may have replaced it at once; a size that is not ours is surely not our file.
    if (mIdentity && mIdentity->size != text.size()) mIdentity.reset();
    mLineCount = folders.size() + lines;
}

void CatalogueStore::Forget() {
    mPath.clear();
    mIdentity.reset();
    mFolders.clear();
    mLineCount = 0;
}

}  // namespace zelaudiofilterhost
