#pragma once

#include <stdexcept>

#include <zelui/Export.h>

namespace zelui {
namespace ui {

/// A layout archive that is missing or cannot be understood. `what` names the archive and says where and why, for the
/// engineer who wrote it.
class ZELUI_API ArchiveError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace ui
}  // namespace zelui
