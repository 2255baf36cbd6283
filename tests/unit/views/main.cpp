#include <gtest/gtest.h>

#include <zelui/Application.h>

#include "support/TwoScreens.h"

int main(int argc, char** argv) {
    const zeltests::TwoScreens screens;
    const zelui::Application application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
