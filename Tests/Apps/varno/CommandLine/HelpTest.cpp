#include "CommandLine/Help.h"
#include "CommandLine/CommandTable.h"
#include "CommandLine/TextLayout.h"
#include "Program.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace varno {
namespace {

using testing::HasSubstr;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(CommandTable, FindsEveryCommandByItsName) {
    for (const auto& command : program().commands) {
        EXPECT_EQ(findCommand(command.name), &command);
    }
    EXPECT_EQ(findCommand("rend"), nullptr);
    EXPECT_EQ(findCommand(""), nullptr);
}

TEST(CommandTable, NamesAreUnique) {
    std::set<std::string_view> commandNames;
    for (const auto& command : program().commands) {
        EXPECT_TRUE(commandNames.insert(command.name).second) << command.name;
        std::set<std::string_view> optionNames;
        for (const auto& option : command.options) {
            EXPECT_TRUE(optionNames.insert(option.name).second) << option.name;
            EXPECT_TRUE(option.shortName.empty() || optionNames.insert(option.shortName).second)
                << option.shortName;
        }
    }
}

TEST(CommandTable, EveryEntryIsComplete) {
    for (const auto& command : program().commands) {
        EXPECT_FALSE(command.usage.empty() || command.description.empty() || command.examples.empty())
            << command.name;
        for (const auto& option : command.options) {
            EXPECT_TRUE(option.name.starts_with("--")) << option.name;
            EXPECT_FALSE(option.group.empty()) << option.name;
            EXPECT_TRUE(option.help.ends_with('.')) << option.name;
            EXPECT_EQ(option.value.empty(), option.kind == ValueKind::kNone)
                << option.name << " needs both .value and .kind, or, as a switch, neither";
            EXPECT_EQ(option.choices.empty(), option.kind != ValueKind::kChoice)
                << option.name << " needs .choices with kChoice and with no other kind";
            EXPECT_EQ(option.numbers.least < option.numbers.most, option.kind == ValueKind::kNumber)
                << option.name << " needs .numbers with kNumber and with no other kind";
        }
    }
}

TEST(CommandTable, EveryCommandHasHelp) {
    for (const auto& command : program().commands) {
        const auto names = [](const OptionEntry& option) { return option.name == "--help"; };
        EXPECT_TRUE(std::ranges::any_of(command.options, names)) << command.name;
    }
}

TEST(HelpText, FitsATerminal) {
    std::string all = programHelp(program());
    for (const auto& command : program().commands) {
        all += commandHelp(command);
    }
    for (const auto& line : linesOf(all)) {
        EXPECT_LE(line.size(), static_cast<std::size_t>(kTextColumns)) << line;
    }
}

TEST(HelpText, NamesEveryOptionOnce) {
    for (const auto& command : program().commands) {
        const auto help = linesOf(commandHelp(command));
        for (const auto& option : command.options) {
            const std::string start = "  " + optionTerm(option);
            const auto shows = [&](const std::string& line) {
                return line == start || line.starts_with(start + "  ");
            };
            EXPECT_EQ(std::ranges::count_if(help, shows), 1) << command.name << ' ' << option.name;
        }
    }
}

TEST(HelpText, NamesEveryCommand) {
    const std::string help = programHelp(program());
    for (const auto& command : program().commands) {
        EXPECT_THAT(help, HasSubstr(std::string(command.name) + ' '));
        EXPECT_THAT(help, HasSubstr(std::string(command.summary)));
    }
}

} // namespace
} // namespace varno
