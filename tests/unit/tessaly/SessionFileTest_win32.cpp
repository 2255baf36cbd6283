#include <filesystem>

#include <gtest/gtest.h>
#include <SessionFile.h>
#include <windows.h>
#include <zelcore/FileError.h>

#include "SessionStage.h"

using namespace tessaly;
using namespace zeltests;

// Wine has no words for this.
TEST(SessionFileWin32Test, AFileThatIsTooLargeIsNotRead) {
    const ThrowAwayFolder folder;
    const std::string path = folder.Path("song.tessaly");
    SessionFile::Save(path, SessionRecord());
    std::filesystem::resize_file(path, std::uintmax_t(600) << 20);
    try {
        SessionFile::Load(path);
        ADD_FAILURE() << "it was read";
    } catch (const zelcore::filesupport::FileError& error) {
        EXPECT_EQ(error.GetSystemError(), ERROR_FILE_TOO_LARGE);
    }
}
