#include <filesystem>

#include <gtest/gtest.h>

#include "RenderFixture.h"
#include "support/WaitFor.h"

namespace zeltests {

namespace {

const std::string kPlain = TestPlugin("vst/good/zel_plain" ZEL_MODULE);

}  // namespace

/// Where the sound goes that replaces something: links, and who may read it.
class TessalyRenderLinksTest : public RenderFixture {};

TEST_F(TessalyRenderLinksTest, WhatWasThereIsReplacedAndALinkToItStaysALink) {
    WriteFile(Path("real.wav"), "old");
    std::filesystem::create_symlink("real.wav", mOutput);
    const Sound input = MakeTestSound(2, 100);
    EXPECT_EQ(Render(input, {"--effect", kPlain}).channels, input.channels);
    EXPECT_TRUE(std::filesystem::is_symlink(mOutput));
    EXPECT_EQ(ReadSound(Path("real.wav")).channels, input.channels);
    EXPECT_EQ(ListFolder(), (std::set<std::string>{"in.wav", "out.wav", "real.wav"}));
}

TEST_F(TessalyRenderLinksTest, ALinkToWhatIsNotThereYetStaysALink) {
    std::filesystem::create_directory(Path("folder"));
    std::filesystem::create_symlink("folder/next.wav", mOutput);
    std::filesystem::create_symlink(Path("folder/real.wav"), Path("folder/next.wav"));
    const Sound input = MakeTestSound(2, 100);
    EXPECT_EQ(Render(input, {"--effect", kPlain}).channels, input.channels);
    EXPECT_TRUE(std::filesystem::is_symlink(mOutput));
    EXPECT_TRUE(std::filesystem::is_symlink(Path("folder/next.wav")));
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(Path("folder/real.wav"))));
    EXPECT_EQ(ListFolder(), (std::set<std::string>{"folder", "in.wav", "out.wav"}));
}

TEST_F(TessalyRenderLinksTest, AFileThatIsReplacedKeepsItsPermissions) {
    using std::filesystem::perms;
    WriteSound(mInput, MakeTestSound(2, 100));
    const perms own = perms::owner_read | perms::owner_write;
    for (const perms wanted : {own, own | perms::group_write | perms::others_write | perms::others_exec}) {
        WriteFile(mOutput, "old");
        std::filesystem::permissions(mOutput, wanted);
        Render({"--effect", kPlain});
        EXPECT_EQ(ReadFrameCount(mOutput), 100u);
        EXPECT_EQ(std::filesystem::status(mOutput).permissions(), wanted);
    }
}

TEST_F(TessalyRenderLinksTest, WhatIsWrittenIsNotReadableMeanwhileForThoseWhoMayNotReadWhatItReplaces) {
    using std::filesystem::perms;
    WriteSound(mInput, MakeTestSound(2, 100));
    WriteFile(mOutput, "old");
    std::filesystem::permissions(mOutput, perms::owner_read | perms::owner_write);
    // Long enough not to end by itself meanwhile.
    const auto program = Start({"render", mInput, mOutput, "--effect", kPlain, "--tail", "3600", "--block", "1"});
    const std::string beside = mOutput + ".partial1";
    std::error_code ignored;
    ASSERT_TRUE(WaitFor([&] { return std::filesystem::file_size(beside, ignored) > 1000 && !ignored; }));
    EXPECT_EQ(std::filesystem::status(beside).permissions(), perms::owner_read | perms::owner_write);
}

}  // namespace zeltests
