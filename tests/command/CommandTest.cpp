#include "command/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Orbita {
namespace {

std::optional<Command> parsed(std::vector<std::string> arguments)
{
    std::vector<char *> pointers;
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    return parseCommand(pointers);
}

TEST(Command, isReadFromOneWordAndEitherStartsOrbitaOrNot)
{
    const std::vector<std::tuple<std::vector<std::string>, Command, bool>> rows{
        {{}, Command::Start, true},          {{"show"}, Command::Show, true},
        {{"toggle"}, Command::Toggle, true}, {{"settings"}, Command::Settings, true},
        {{"hide"}, Command::Hide, false},    {{"quit"}, Command::Quit, false}};
    for (const auto &[words, command, starts] : rows) {
        EXPECT_EQ(parsed(words), command);
        EXPECT_EQ(startsOrbita(command), starts);
    }
    EXPECT_EQ(parsed({"--help"}), Command::Help);
    EXPECT_EQ(parsed({"--version"}), Command::Version);
    for (const char *unknown : {"", "Show", "--show", "showw", "-"})
        EXPECT_FALSE(parsed({unknown})) << unknown;
    EXPECT_FALSE(parsed({"show", "hide"}));
}

} // namespace
} // namespace Orbita
