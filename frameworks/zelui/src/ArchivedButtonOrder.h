#pragma once

namespace zelui {

/// Whether people of this platform expect the button that confirms to the right of the one that cancels, where
/// archives have them the other way round.
bool ConfirmingButtonStandsLast();

}  // namespace zelui
