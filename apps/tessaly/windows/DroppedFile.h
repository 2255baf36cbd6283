#pragma once

#include <string>

class QDropEvent;

namespace tessaly {

/// The one local file that is dragged or dropped, its path in UTF-8; empty for anything else.
std::string GetDroppedFile(const QDropEvent& event);

}  // namespace tessaly
