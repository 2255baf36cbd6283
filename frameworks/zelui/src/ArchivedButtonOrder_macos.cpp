#include "ArchivedButtonOrder.h"

namespace zelui {

bool ConfirmingButtonStandsLast() { return true; }

}  // namespace zelui
