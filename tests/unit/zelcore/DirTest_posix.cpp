#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/Dir.h>

#include "ScopedEnvironment.h"

using zelcore::filesupport::Dir;
using zeltests::ScopedEnvironment;
using zeltests::ThrowAwayFolder;

TEST(DirTest, PreferencesFollowTheBaseDirectories) {
    const ThrowAwayFolder folder;
    const ScopedEnvironment home("HOME", folder.Path("home").c_str());
    {
        const ScopedEnvironment config("XDG_CONFIG_HOME", folder.Path("config").c_str());
        EXPECT_EQ(Dir::PrefDir(), Dir(folder.UPath("config/tessaly")));
        EXPECT_TRUE(Dir(folder.UPath("config/tessaly")).Exists());
    }
    for (const char* const unusable : {static_cast<const char*>(nullptr), "", "relative/folder"}) {
        const ScopedEnvironment config("XDG_CONFIG_HOME", unusable);
        EXPECT_EQ(Dir::PrefDir(), Dir(folder.UPath("home/.config/tessaly")));
        EXPECT_TRUE(Dir(folder.UPath("home/.config/tessaly")).Exists());
    }
}
