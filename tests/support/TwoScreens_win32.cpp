#include <filesystem>

#include "support/TwoScreens.h"

namespace zeltests {

// The toolkit takes the colon behind a drive's letter for the end of the name: the file is found from its own folder.
std::string TwoScreens::NameFile() {
    mLeft = std::filesystem::current_path().string();
    std::filesystem::current_path(ToPath(mFolder.GetPath()));
    return "screens.json";
}

void TwoScreens::Leave() {
    std::error_code ignored;
    if (!mLeft.empty()) std::filesystem::current_path(mLeft, ignored);
}

}  // namespace zeltests
