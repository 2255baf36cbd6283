#pragma once

#include <exception>
#include <qlogging.h>

namespace zelui {

/// Calls code of the host from one of Qt's event handlers. Qt's loop lets no exception through: it is reported on the
/// error stream, with `where` it was thrown, and ends here.
template <typename Function>
void CallOut(const char* where, Function function) noexcept {
    try {
        function();
    } catch (const std::exception& error) {
        qWarning("%s threw an exception: %s", where, error.what());
    } catch (...) {
        qWarning("%s threw an exception", where);
    }
}

}  // namespace zelui
