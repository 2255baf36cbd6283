#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Sound.h"
#include "support/Program.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {

std::string TestPlugin(const std::string& path);

/// `tessaly render` as a user calls it, in a folder of its own with a profile of its own.
class RenderFixture : public testing::Test {
protected:
    RenderFixture();

    std::vector<std::string> GetEnvironment() const;
    std::unique_ptr<Program> Start(std::vector<std::string> arguments);
    /// Renders IN to OUT with these arguments behind; expects success and answers what was printed.
    std::string Render(const std::vector<std::string>& arguments);
    /// The same with sound in place of the files.
    Sound Render(const Sound& input, const std::vector<std::string>& arguments);
    /// Renders IN to OUT and expects a failure: that exit code, nothing on the standard output, and OUT and all else
    /// in the folder as it was. Answers the error.
    std::string Fail(int exitCode, const std::vector<std::string>& arguments);
    std::string Fail(int exitCode, const std::string& input, const std::string& output,
                     const std::vector<std::string>& arguments);

    std::string Path(const std::string& name) const { return mSounds.Path(name); }
    std::set<std::string> ListFolder() const;

    ThrowAwayFolder mSounds;
    ThrowAwayFolder mOther;  ///< profile, and what programs print
    const std::string mInput;
    const std::string mOutput;
    /// For plug-ins of other people, whose leaks a sanitizer would count against the process that loaded them.
    bool mIgnoresLeaks;
};

}  // namespace zeltests
