#include "support/TwoScreens.h"

namespace zeltests {

std::string TwoScreens::NameFile() { return mFolder.Path("screens.json"); }

void TwoScreens::Leave() {}

}  // namespace zeltests
