#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/DebugDatabase.h>

#include "ScopedEnvironment.h"

using zelcore::debug::DebugDatabase;
using zeltests::ScopedEnvironment;

namespace {

class DebugDatabaseTest : public ::testing::Test {
protected:
    DebugDatabaseTest() { DebugDatabase::Instance().Reload(); }
    ~DebugDatabaseTest() override {
        std::filesystem::remove(Path());
        DebugDatabase::Instance().Reload();
    }

    std::string Path() const { return mPreferences.GetFolder().Path("DebugDatabase.txt"); }

    void Load(const std::string& text) {
        zeltests::WriteFile(Path(), text);
        DebugDatabase::Instance().Reload();
    }

    static std::string Get(const std::string& key) { return DebugDatabase::Instance().GetEntry(key, "default"); }

    zeltests::ThrowAwayPreferences mPreferences;
};

}  // namespace

TEST_F(DebugDatabaseTest, WithoutAFileEverythingIsDefault) {
    EXPECT_EQ(Get("DebugPluginLoading"), "default");
    EXPECT_TRUE(DebugDatabase::Instance().GetBool("Some.Switch", true));
    EXPECT_FALSE(DebugDatabase::Instance().GetBool("Some.Switch", false));
}

TEST_F(DebugDatabaseTest, ReadsNamesAndValues) {
    Load("a=1\r\n  Some.Key = two words \n# b=2\n#c=3\nd==x=\ne=\na=last");
    EXPECT_EQ(Get("a"), "last");
    EXPECT_EQ(Get("Some.Key"), "two words");
    EXPECT_EQ(Get("b"), "default");
    EXPECT_EQ(Get("# b"), "default");
    EXPECT_EQ(Get("#c"), "default");
    EXPECT_EQ(Get("d"), "=x=");
    EXPECT_EQ(Get("e"), "");
}

TEST_F(DebugDatabaseTest, MalformedLinesAreIgnoredAndTheOthersRead) {
    Load(std::string("no equals sign\n=no name\n   = \n\n\xFF\xFE\n") + std::string("\0\0\n", 3) + "good=yes\n");
    EXPECT_EQ(Get("good"), "yes");
    EXPECT_EQ(Get(""), "default");
    EXPECT_EQ(Get("no equals sign"), "default");
}

TEST_F(DebugDatabaseTest, FileBeyondOneMebibyteIsIgnored) {
    Load("a=1\n" + std::string((1u << 20) - 4, '#'));
    EXPECT_EQ(Get("a"), "1");
    Load("a=1\n" + std::string((1u << 20) - 3, '#'));
    EXPECT_EQ(Get("a"), "default");
}

TEST_F(DebugDatabaseTest, EnvironmentWinsOverTheFile) {
    Load("AudioPluginManager.ShowExternalCheckBox=file");
    const ScopedEnvironment environment("ZEL_DEBUG_AudioPluginManager_ShowExternalCheckBox", "environment");
    EXPECT_EQ(Get("AudioPluginManager.ShowExternalCheckBox"), "environment");
    const ScopedEnvironment other("ZEL_DEBUG_a_b__9", "odd");
    EXPECT_EQ(Get("a-b\xC3\x84"
                  "9"),
              "odd");
}

TEST_F(DebugDatabaseTest, ValueOfThisRunWinsUntilReload) {
    Load("a=file");
    const ScopedEnvironment environment("ZEL_DEBUG_a", "environment");
    DebugDatabase::Instance().SetEntry("a", "run");
    EXPECT_EQ(Get("a"), "run");
    DebugDatabase::Instance().Reload();
    EXPECT_EQ(Get("a"), "environment");
}

TEST_F(DebugDatabaseTest, SwitchesKnowFourWords) {
    Load("t=true\nn1=1\nf=false\nn0=0\nodd=yes");
    const DebugDatabase& database = DebugDatabase::Instance();
    EXPECT_TRUE(database.GetBool("t", false));
    EXPECT_TRUE(database.GetBool("n1", false));
    EXPECT_FALSE(database.GetBool("f", true));
    EXPECT_FALSE(database.GetBool("n0", true));
    EXPECT_TRUE(database.GetBool("odd", true));
    EXPECT_FALSE(database.GetBool("odd", false));
}
