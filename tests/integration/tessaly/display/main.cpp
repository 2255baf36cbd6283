#include <gtest/gtest.h>
#include <zelaudiofilterhostui/Module.h>
#include <zelui/Application.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const zelui::Application application(argc, argv);
    zelaudiofilterhostui::Initialize();
    const int code = RUN_ALL_TESTS();
    zelaudiofilterhostui::Terminate();
    return code;
}
