#include "ArchivedButtonOrder.h"

namespace zelui {

bool ConfirmingButtonStandsLast() { return false; }

}  // namespace zelui
