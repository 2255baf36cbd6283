#include <filesystem>

#include <gmock/gmock.h>

#include "TessalyStage.h"

namespace zeltests {

using testing::HasSubstr;

/// With programs that can be copied alone, and names that other systems do not allow.
typedef TessalyStage TessalyPosixTest;

TEST_F(TessalyPosixTest, MissingScannerProgramIsTold) {
    std::filesystem::copy_file(std::string(ZEL_BIN_DIR) + "/tessaly", mPlugins.Path("tessaly"));
    const auto scan = Start({"scan", GetFolder()}, "profile", mPlugins.Path("tessaly"));
    EXPECT_EQ(1, scan->Wait());
    EXPECT_THAT(scan->GetErrors(), HasSubstr("the scanner program is missing"));
}

TEST_F(TessalyPosixTest, NamesThatHoldTerminalControlsCannotDisturbTheTerminal) {
    Add("vst/good/zel_gain" ZEL_MODULE, "a\033[2Jb" ZEL_MODULE);
    const auto scan = Start({"scan", GetFolder()});
    EXPECT_EQ(0, scan->Wait());
    EXPECT_EQ(std::string::npos, scan->GetOutput().find('\033'));
    EXPECT_EQ(std::string::npos, scan->GetErrors().find('\033'));
}

}  // namespace zeltests
