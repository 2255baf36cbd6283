#pragma once

#include <string>
#include <string_view>

#include "SessionRecord.h"

namespace tessaly {

/// Reads the text of session files, which may come from anybody: every type, number and length is looked at before it
/// is used. Main thread.
class SessionReader {
public:
    /// `folder` is the full path of the one that the file is in. Throws SessionError.
    static SessionRecord Read(std::string_view text, const std::string& folder);
};

}  // namespace tessaly
