#include <gtest/gtest.h>

#include <zelui/Application.h>

#include "ProcessModes.h"
#include "support/TwoScreens.h"

int main(int argc, char** argv) {
    if (const zeltests::ProcessMode mode = zeltests::FindProcessMode(argc, argv)) return mode(argc, argv);
    const zeltests::TwoScreens screens;
    zelui::Application application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
