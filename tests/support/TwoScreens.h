#pragma once

#include <string>

#include "support/ThrowAwayFolder.h"

namespace zeltests {

/// While it lives, an application without a display that is made has two screens: one of 800 by 800 display units, of a
/// pixel each, and beside it another one of the same size with twice the pixels. Made before the application.
class TwoScreens {
public:
    TwoScreens();
    ~TwoScreens();
    TwoScreens(const TwoScreens&) = delete;
    TwoScreens& operator=(const TwoScreens&) = delete;

private:
    /// How the file of the screens is named to the toolkit, and what had to be changed for that.
    std::string NameFile();
    void Leave();

    ThrowAwayFolder mFolder;
    std::string mLeft;
};

}  // namespace zeltests
