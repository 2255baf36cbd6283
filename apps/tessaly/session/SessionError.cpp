#include "SessionError.h"

#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>

#include "TerminalText.h"

namespace tessaly {

SessionError::SessionError(std::string_view keyAndDefault, std::initializer_list<zelcore::ustring> values)
    : std::runtime_error(TerminalText::FromText(
          zelcore::utility::FillPlaceholders(zelcore::config::Localize(keyAndDefault), values))) {}

}  // namespace tessaly
