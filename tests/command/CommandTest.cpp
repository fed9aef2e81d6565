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

TEST(Command, isReadFromOneWord)
{
    EXPECT_EQ(parsed({}), Command::Start);
    EXPECT_EQ(parsed({"show"}), Command::Show);
    EXPECT_EQ(parsed({"hide"}), Command::Hide);
    EXPECT_EQ(parsed({"toggle"}), Command::Toggle);
    EXPECT_EQ(parsed({"settings"}), Command::Settings);
    EXPECT_EQ(parsed({"quit"}), Command::Quit);
    EXPECT_EQ(parsed({"--help"}), Command::Help);
    EXPECT_EQ(parsed({"--version"}), Command::Version);
    for (const char *unknown : {"", "Show", "--show", "showw", "-"})
        EXPECT_FALSE(parsed({unknown})) << unknown;
    EXPECT_FALSE(parsed({"show", "hide"}));
}

TEST(Command, thatEndsThingsStartsNothing)
{
    for (const Command starting : {Command::Start, Command::Show, Command::Toggle, Command::Settings})
        EXPECT_TRUE(startsOrbita(starting));
    EXPECT_FALSE(startsOrbita(Command::Hide));
    EXPECT_FALSE(startsOrbita(Command::Quit));
}

} // namespace
} // namespace Orbita
