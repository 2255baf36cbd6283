#pragma once

#include <cstdlib>
#include <string>

#include "support/ThrowAwayFolder.h"

namespace zeltests {

/// While it lives, an application without a display that is made has two screens: one of 800 by 800 display units, of a
/// pixel each, and beside it another one of the same size with twice the pixels. Made before the application.
class TwoScreens {
public:
    TwoScreens() {
        const char* const platform = std::getenv("QT_QPA_PLATFORM");
        if (platform == nullptr || std::string(platform) != "offscreen") return;
        WriteFile(mFolder.Path("screens.json"), R"({"screens": [
            {"name": "one", "x": 0, "y": 0, "width": 800, "height": 800, "dpr": 1},
            {"name": "two", "x": 800, "y": 0, "width": 800, "height": 800, "dpr": 2}]})");
        setenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + mFolder.Path("screens.json")).c_str(), 1);
    }

private:
    ThrowAwayFolder mFolder;
};

}  // namespace zeltests
