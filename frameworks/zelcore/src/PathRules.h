#pragma once

#include <cstddef>

#include <zelcore/ustring.h>

namespace zelcore {
namespace filesupport {

/// How the platform writes paths. None of these touches the disk; any thread.

/// Index behind the root that `path` begins with, which nobody can make: 0 when it begins with none.
std::size_t FindRootEnd(const ustring& path);
/// `path` without separators at its end, but for a root.
ustring WithoutTrailingSeparators(const ustring& path);
/// `name` inside `folder`; `name` alone when `folder` is empty.
ustring JoinPath(const ustring& folder, const ustring& name);
/// Index of the first separator at or behind `from`; the length of `path` when there is none.
std::size_t FindSeparator(const ustring& path, std::size_t from);
/// Where the name behind the last separator begins.
std::size_t FindNameStart(const ustring& path);
/// The folder that `path` is in: the root for what is in it and for itself, empty for a path without a separator.
ustring ParentFolder(const ustring& path);
/// True for a path that does not depend on the current folder.
bool IsAbsolutePath(const ustring& path);

}  // namespace filesupport
}  // namespace zelcore
