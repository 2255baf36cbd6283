#pragma once

#include <string_view>

#include <zelcore/ustring.h>

namespace zelcore {
namespace filesupport {

/// The platform's file operations, with full paths. Any thread. Those that fail throw FileError; those that ask answer
/// false for what they cannot reach.

bool IsRegularFile(const ustring& path);
bool IsFolder(const ustring& path);
void DeleteRegularFile(const ustring& path);
/// Makes one folder for the current user only. A folder that is there already, or that somebody else makes meanwhile,
/// is fine.
void MakeFolder(const ustring& path);
/// What a file that is being replaced stands, without becoming half of it: the end of this process, or of the power
/// too.
enum Durability { kOutlivesProcess, kOutlivesPower };
/// Makes `bytes` the content of the file in one step for whoever looks. Links are followed.
void ReplaceFile(const ustring& path, std::string_view bytes, Durability durability);
/// Deletes what processes that were killed in ReplaceFile left in that folder. Never throws: what cannot be deleted now
/// is tried again the next time.
void RemoveLeftovers(const ustring& folder) noexcept;
/// What the temporary file of a process is called: this, its number, a dash, a count, and the other.
constexpr std::string_view kTemporaryPrefix = ".zel-";
constexpr std::string_view kTemporarySuffix = ".tmp";
/// The process that a file of that name belongs to; 0 for any other file.
unsigned long FindTemporaryOwner(std::string_view name);
/// Renames a file. Returns false when `to` is taken; nothing is ever replaced.
bool RenameToFreeName(const ustring& from, const ustring& to);
/// The platform's number for "the file is too large".
extern const int kFileTooLargeError;

}  // namespace filesupport
}  // namespace zelcore
