#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <sys/stat.h>
#include <zelcore/File.h>

TEST(FileTest, PipesAreNoFiles) {
    const zeltests::ThrowAwayFolder folder;
    ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(zelcore::filesupport::File(folder.UPath("pipe")).Exists());
}
