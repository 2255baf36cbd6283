#pragma once

#include <cstddef>
#include <string>

#include "SessionRecord.h"

namespace tessaly {

/// Reads and writes session files ("*.tessaly"): one JSON object, described in docs/file-formats.md. Paths of sounds
/// are kept relative to the session's folder as well, so that a folder can be moved as a whole. Main thread.
class SessionFile {
public:
    static constexpr std::size_t kMaxSize = std::size_t(512) << 20;
    static constexpr std::size_t kMaxEffects = 256;

    /// Throws std::runtime_error that says in plain words what is wrong: no such file, too large, no session, of a
    /// later version of the program, or with values that make no sense.
    static SessionRecord Load(const std::string& path);
    /// Writes beside and renames: whatever happens, a power cut included, the file is the old one or the new one.
    /// Throws std::runtime_error with the reason; the old file is then untouched.
    static void Save(const std::string& path, const SessionRecord& session);
};

}  // namespace tessaly
