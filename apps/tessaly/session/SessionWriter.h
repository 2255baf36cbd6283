#pragma once

#include <QByteArray>
#include <string>

#include "SessionRecord.h"

namespace tessaly {

/// Turns sessions into the text of their files. Main thread.
class SessionWriter {
public:
    /// `folder` is the full path of the one that the file will be in. Throws std::runtime_error for more than a session
    /// file may have.
    static QByteArray Write(const SessionRecord& session, const std::string& folder);
};

}  // namespace tessaly
