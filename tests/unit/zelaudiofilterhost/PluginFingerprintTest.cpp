#include <fcntl.h>
#include <sys/stat.h>

#include <filesystem>

#include <zelaudiofilterhost/PluginFingerprint.h>

#include "CatalogueTestSupport.h"

namespace {

using zelaudiofilterhost::PluginFingerprint;
using zeltests::ThrowAwayFolder;
using zeltests::WriteFile;

void SetTime(const std::string& path, std::int64_t milliseconds) {
    timespec times[2] = {};
    times[0].tv_sec = times[1].tv_sec = milliseconds / 1000;
    times[0].tv_nsec = times[1].tv_nsec = (milliseconds % 1000) * 1000000;
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

PluginFingerprint Take(const ThrowAwayFolder& folder, const std::string& name) {
    return PluginFingerprint::Take(folder.UPath(name));
}

TEST(PluginFingerprintTest, AFileHasItsSizeAndTime) {
    const ThrowAwayFolder folder;
    WriteFile(folder.Path("a.so"), "12345");
    SetTime(folder.Path("a.so"), 1700000000123);
    EXPECT_EQ(Take(folder, "a.so"), (PluginFingerprint{5, 1700000000123}));
}

TEST(PluginFingerprintTest, NothingThereIsAllZero) {
    const ThrowAwayFolder folder;
    EXPECT_EQ(Take(folder, "a.so"), PluginFingerprint());
    EXPECT_EQ(PluginFingerprint::Take(zelcore::ustring()), PluginFingerprint());
    EXPECT_EQ(PluginFingerprint::Take(zeltests::U("relative.so")), PluginFingerprint());
}

TEST(PluginFingerprintTest, ABundleCoversAllItsFiles) {
    const ThrowAwayFolder folder;
    std::filesystem::create_directories(folder.Path("b.vst3/Contents/x86_64-linux"));
    std::filesystem::create_directories(folder.Path("b.vst3/Contents/Resources"));
    WriteFile(folder.Path("b.vst3/Contents/x86_64-linux/b.so"), "1234");
    WriteFile(folder.Path("b.vst3/Contents/Resources/moduleinfo.json"), "123");
    SetTime(folder.Path("b.vst3/Contents/x86_64-linux/b.so"), 1000);
    SetTime(folder.Path("b.vst3/Contents/Resources/moduleinfo.json"), 2500);
    EXPECT_EQ(Take(folder, "b.vst3"), (PluginFingerprint{7, 2500}));

    WriteFile(folder.Path("b.vst3/Contents/Resources/preset"), "1");
    SetTime(folder.Path("b.vst3/Contents/Resources/preset"), 10);
    EXPECT_EQ(Take(folder, "b.vst3"), (PluginFingerprint{8, 2500}));
}

TEST(PluginFingerprintTest, ALinkHasTheFingerprintOfItsFile) {
    const ThrowAwayFolder folder;
    WriteFile(folder.Path("a.so"), "12345");
    std::filesystem::create_symlink(folder.Path("a.so"), folder.Path("link.so"));
    EXPECT_EQ(Take(folder, "link.so"), Take(folder, "a.so"));
    EXPECT_EQ(Take(folder, "link.so").size, 5u);
}

TEST(PluginFingerprintTest, LinksThatLeadInCirclesAreHarmless) {
    const ThrowAwayFolder folder;
    std::filesystem::create_directory(folder.Path("b.vst3"));
    WriteFile(folder.Path("b.vst3/file"), "123");
    std::filesystem::create_directory_symlink(folder.Path("b.vst3"), folder.Path("b.vst3/again"));
    std::filesystem::create_symlink(folder.Path("b.vst3/self"), folder.Path("b.vst3/self"));
    EXPECT_EQ(Take(folder, "b.vst3").size, 3u);
}

TEST(PluginFingerprintTest, APipeIsNoFileAndDoesNotHang) {
    const ThrowAwayFolder folder;
    ASSERT_EQ(::mkfifo(folder.Path("x.so").c_str(), 0600), 0);
    EXPECT_EQ(Take(folder, "x.so"), PluginFingerprint());
}

}  // namespace
