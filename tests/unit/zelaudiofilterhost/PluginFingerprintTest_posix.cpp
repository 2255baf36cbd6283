#include <sys/stat.h>

#include <filesystem>

#include <zelaudiofilterhost/PluginFingerprint.h>

#include "CatalogueTestSupport.h"

namespace {

using zelaudiofilterhost::PluginFingerprint;
using zeltests::ThrowAwayFolder;
using zeltests::WriteFile;

PluginFingerprint Take(const ThrowAwayFolder& folder, const std::string& name) {
    return PluginFingerprint::Take(folder.UPath(name));
}

TEST(PluginFingerprintPosixTest, ALinkHasTheFingerprintOfItsFile) {
    const ThrowAwayFolder folder;
    WriteFile(folder.Path("a" ZEL_MODULE), "12345");
    std::filesystem::create_symlink(folder.Path("a" ZEL_MODULE), folder.Path("link" ZEL_MODULE));
    EXPECT_EQ(Take(folder, "link" ZEL_MODULE), Take(folder, "a" ZEL_MODULE));
    EXPECT_EQ(Take(folder, "link" ZEL_MODULE).size, 5u);
}

TEST(PluginFingerprintPosixTest, LinksThatLeadInCirclesAreHarmless) {
    const ThrowAwayFolder folder;
    std::filesystem::create_directory(folder.Path("b.vst3"));
    WriteFile(folder.Path("b.vst3/file"), "123");
    std::filesystem::create_directory_symlink(folder.Path("b.vst3"), folder.Path("b.vst3/again"));
    std::filesystem::create_symlink(folder.Path("b.vst3/self"), folder.Path("b.vst3/self"));
    EXPECT_EQ(Take(folder, "b.vst3").size, 3u);
}

TEST(PluginFingerprintPosixTest, APipeIsNoFileAndDoesNotHang) {
    const ThrowAwayFolder folder;
    ASSERT_EQ(::mkfifo(folder.Path("x" ZEL_MODULE).c_str(), 0600), 0);
    EXPECT_EQ(Take(folder, "x" ZEL_MODULE), PluginFingerprint());
}

}  // namespace
