#include <gtest/gtest.h>
#include <zelui/Application.h>

#include "DeviceStage.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // Before anything of Qt looks for devices: it does so once in a program's life.
    zeltests::SoundServer server;
    zeltests::SetSoundServer(&server);
    const zelui::Application application(argc, argv);
    return RUN_ALL_TESTS();
}
