#include <gtest/gtest.h>

#include <zelui/Application.h>

#include "ProcessModes.h"

int main(int argc, char** argv) {
    if (const zeltests::ProcessMode mode = zeltests::FindProcessMode(argc, argv)) return mode(argc, argv);
    zelui::Application application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
