#include "support/TwoScreens.h"

#include <cstdlib>

#include "support/Environment.h"

namespace zeltests {

TwoScreens::TwoScreens() {
    const char* const platform = std::getenv("QT_QPA_PLATFORM");
    if (platform == nullptr || std::string(platform) != "offscreen") return;
    WriteFile(mFolder.Path("screens.json"), R"({"screens": [
            {"name": "one", "x": 0, "y": 0, "width": 800, "height": 800, "dpr": 1},
            {"name": "two", "x": 800, "y": 0, "width": 800, "height": 800, "dpr": 2}]})");
    SetVariable("QT_QPA_PLATFORM", ("offscreen:configfile=" + NameFile()).c_str());
}

TwoScreens::~TwoScreens() { Leave(); }

}  // namespace zeltests
