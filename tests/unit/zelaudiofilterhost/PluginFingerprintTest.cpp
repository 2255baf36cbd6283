#include <filesystem>

#include <zelaudiofilterhost/PluginFingerprint.h>

#include "CatalogueTestSupport.h"
#include "FileFacts.h"

namespace {

using zelaudiofilterhost::PluginFingerprint;
using zeltests::SetChangeTime;
using zeltests::ThrowAwayFolder;
using zeltests::WriteFile;

PluginFingerprint Take(const ThrowAwayFolder& folder, const std::string& name) {
    return PluginFingerprint::Take(folder.UPath(name));
}

TEST(PluginFingerprintTest, AFileHasItsSizeAndTime) {
    const ThrowAwayFolder folder;
    WriteFile(folder.Path("a" ZEL_MODULE), "12345");
    SetChangeTime(folder.Path("a" ZEL_MODULE), 1700000000123);
    EXPECT_EQ(Take(folder, "a" ZEL_MODULE), (PluginFingerprint{5, 1700000000123}));
}

TEST(PluginFingerprintTest, NothingThereIsAllZero) {
    const ThrowAwayFolder folder;
    EXPECT_EQ(Take(folder, "a" ZEL_MODULE), PluginFingerprint());
    EXPECT_EQ(PluginFingerprint::Take(zelcore::ustring()), PluginFingerprint());
    EXPECT_EQ(PluginFingerprint::Take(zeltests::U("relative" ZEL_MODULE)), PluginFingerprint());
}

TEST(PluginFingerprintTest, ABundleCoversAllItsFiles) {
    const ThrowAwayFolder folder;
    std::filesystem::create_directories(folder.Path("b.vst3/Contents/" ZEL_BUNDLE_FOLDER));
    std::filesystem::create_directories(folder.Path("b.vst3/Contents/Resources"));
    WriteFile(folder.Path("b.vst3/Contents/" ZEL_BUNDLE_FOLDER "/b" ZEL_BUNDLE_MODULE), "1234");
    WriteFile(folder.Path("b.vst3/Contents/Resources/moduleinfo.json"), "123");
    SetChangeTime(folder.Path("b.vst3/Contents/" ZEL_BUNDLE_FOLDER "/b" ZEL_BUNDLE_MODULE), 1000);
    SetChangeTime(folder.Path("b.vst3/Contents/Resources/moduleinfo.json"), 2500);
    EXPECT_EQ(Take(folder, "b.vst3"), (PluginFingerprint{7, 2500}));

    WriteFile(folder.Path("b.vst3/Contents/Resources/preset"), "1");
    SetChangeTime(folder.Path("b.vst3/Contents/Resources/preset"), 10);
    EXPECT_EQ(Take(folder, "b.vst3"), (PluginFingerprint{8, 2500}));
}

}  // namespace
