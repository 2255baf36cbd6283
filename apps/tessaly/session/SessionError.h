#pragma once

#include <initializer_list>
#include <stdexcept>
#include <string_view>

#include <zelcore/ustring.h>

namespace tessaly {

/// Why a session or an effect of one cannot be had: one localised sentence, in UTF-8. Main thread.
class SessionError : public std::runtime_error {
public:
    /// "$$$/key=Default", and the values of its placeholders.
    explicit SessionError(std::string_view keyAndDefault, std::initializer_list<zelcore::ustring> values = {});
};

}  // namespace tessaly
