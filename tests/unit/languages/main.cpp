#include <gtest/gtest.h>
#include <zelui/Application.h>

int main(int argc, char** argv) {
    const zelui::Application application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
