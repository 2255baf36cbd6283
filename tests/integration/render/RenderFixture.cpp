#include "RenderFixture.h"

#include <cstdlib>
#include <filesystem>

namespace zeltests {

std::string TestPlugin(const std::string& path) { return std::string(ZEL_TESTPLUGINS_DIR) + "/" + path; }

RenderFixture::RenderFixture() : mInput(Path("in.wav")), mOutput(Path("out.wav")), mIgnoresLeaks(false) {}

std::vector<std::string> RenderFixture::GetEnvironment() const {
    std::vector<std::string> variables = {SettingsIn(mOther.Path("profile")), "VST3_PATH=", "VST_PATH="};
    const char* const given = std::getenv("ASAN_OPTIONS");
    if (mIgnoresLeaks) variables.push_back("ASAN_OPTIONS=" + std::string(given ? given : "") + ":detect_leaks=0");
    return variables;
}

std::unique_ptr<Program> RenderFixture::Start(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), std::string(ZEL_BIN_DIR) + "/tessaly");
    return std::make_unique<Program>(mOther.GetPath(), arguments, GetEnvironment());
}

std::string RenderFixture::Render(const std::vector<std::string>& arguments) {
    std::vector<std::string> all = {"render", mInput, mOutput};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const std::unique_ptr<Program> program = Start(all);
    EXPECT_EQ(program->Wait(), 0) << program->GetErrors();
    return program->GetOutput();
}

Sound RenderFixture::Render(const Sound& input, const std::vector<std::string>& arguments) {
    WriteSound(mInput, input);
    Render(arguments);
    return ReadSound(mOutput);
}

std::string RenderFixture::Fail(int exitCode, const std::vector<std::string>& arguments) {
    return Fail(exitCode, mInput, mOutput, arguments);
}

std::string RenderFixture::Fail(int exitCode, const std::string& input, const std::string& output,
                                const std::vector<std::string>& arguments) {
    const std::string before = "not a sound, and not to be touched";
    WriteFile(mOutput, before);
    const std::set<std::string> filesBefore = ListFolder();
    std::vector<std::string> all = {"render", input, output};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const std::unique_ptr<Program> program = Start(all);
    EXPECT_EQ(program->Wait(), exitCode) << program->GetErrors();
    EXPECT_EQ(program->GetOutput(), "");
    EXPECT_TRUE(ReadFile(mOutput) == before);
    EXPECT_EQ(ListFolder(), filesBefore);
    return program->GetErrors();
}

std::set<std::string> RenderFixture::ListFolder() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(mSounds.GetPath()))
        names.insert(entry.path().filename().string());
    return names;
}

}  // namespace zeltests
