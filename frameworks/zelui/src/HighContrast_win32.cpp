#include <windows.h>

#include "HighContrast.h"

namespace zelui {

bool SystemWantsHighContrast() {
    HIGHCONTRASTW setting = {};
    setting.cbSize = sizeof setting;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0) &&
           (setting.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

}  // namespace zelui
