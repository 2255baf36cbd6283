#include <map>
#include <regex>
#include <sstream>

#include <gmock/gmock.h>

#include "RenderFixture.h"

namespace zeltests {

using testing::HasSubstr;
using testing::Not;

namespace {

typedef std::map<std::string, std::set<std::string>> OptionsByCommand;

/// What the help text says that there is.
OptionsByCommand ReadHelp(const std::string& help) {
    OptionsByCommand options;
    std::istringstream lines(help);
    std::string command;
    const std::regex option("--[a-z][a-z-]*");
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        // A command stands two columns in, what is told of it further.
        if (std::regex_search(line, match, std::regex("^  ([a-z]+)( |$)"))) command = match[1];
        if (line.empty()) command.clear();
        if (command.empty()) continue;
        options[command];
        for (std::sregex_iterator it(line.begin(), line.end(), option), end; it != end; ++it)
            options[command].insert(it->str());
    }
    return options;
}

}  // namespace

/// The help text and what there is.
class TessalyHelpTest : public RenderFixture {
protected:
    std::string GetHelp() {
        const auto program = Start({"--help"});
        EXPECT_EQ(program->Wait(), 0);
        return program->GetOutput();
    }
};

TEST_F(TessalyHelpTest, TellsOfEveryCommandAndEveryOption) {
    const OptionsByCommand there = {
        {"scan", {"--in-process", "--json", "--rescan"}},
        {"list", {"--json"}},
        {"manage", {"--screenshot", "--theme"}},
        {"edit", {"--channel-map", "--component", "--generic", "--screenshot", "--side-chain", "--theme", "--track"}},
        {"render", {"--block", "--component", "--effect", "--map", "--set", "--side-chain", "--tail", "--track"}},
        {"tour", {"--out", "--theme"}}};
    EXPECT_EQ(ReadHelp(GetHelp()), there);
}

TEST_F(TessalyHelpTest, TellsOfNoOptionThatDoesNotExist) {
    for (const auto& [command, options] : ReadHelp(GetHelp())) {
        for (const std::string& option : options) {
            SCOPED_TRACE(testing::Message() << command << " " << option);
            // An option that makes no sense ends each of these before it begins.
            const auto program = Start({command, option, "--no-such-option", "--no-such-option"});
            EXPECT_EQ(program->Wait(), 2);
            EXPECT_THAT(program->GetErrors(), Not(HasSubstr("unknown option '" + option + "'")));
        }
    }
}

TEST_F(TessalyHelpTest, FitsATerminalOf120Columns) {
    std::istringstream lines(GetHelp());
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 120u) << line;
}

}  // namespace zeltests
