#include "command/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Orbita {
namespace {

std::optional<Request> parsed(std::vector<std::string> arguments)
{
    std::vector<char *> pointers;
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    return parseRequest(pointers);
}

TEST(Command, isReadFromOneWordAndEitherStartsOrbitaOrNot)
{
    const std::vector<std::tuple<std::vector<std::string>, Command, bool>> rows{
        {{}, Command::Start, true},
        {{"show"}, Command::Show, true},
        {{"toggle"}, Command::Toggle, true},
        {{"settings"}, Command::Settings, true},
        {{"hide"}, Command::Hide, false},
        {{"quit"}, Command::Quit, false},
        {{"stop-scripts"}, Command::StopScripts, false}};
    for (const auto &[words, command, starts] : rows) {
        EXPECT_EQ(parsed(words), Request{command});
        EXPECT_EQ(startsOrbita(command), starts);
    }
    EXPECT_EQ(parsed({"--help"}), Request{Command::Help});
    EXPECT_EQ(parsed({"--version"}), Request{Command::Version});
    for (const char *unknown : {"", "Show", "--show", "showw", "-"})
        EXPECT_FALSE(parsed({unknown})) << unknown;
    EXPECT_FALSE(parsed({"show", "hide"}));
}

TEST(Command, opensAddressesWhichNeverBeginWithADash)
{
    EXPECT_EQ(parsed({"open", "a:b", "show"}), (Request{Command::Open, {"a:b", "show"}}));
    EXPECT_EQ(parsed({"open", "-"}), (Request{Command::Open, {"-"}}));
    EXPECT_EQ(parsed({"open"}), Request{});
    for (const std::vector<std::string> &words : {std::vector<std::string>{"open", "a:", "-"},
                                                  {"open", "--help"},
                                                  {"open", ""},
                                                  {"open", "-", "-"},
                                                  {"show", "open"},
                                                  {"--touch-recording", "f", "open"}})
        EXPECT_FALSE(parsed(words)) << words.back();
}

TEST(Command, passesARecordingOnToTheProgramItStarts)
{
    const Request shown{Command::Show, {}, "a file"};
    EXPECT_EQ(parsed({"show", "--touch-recording", "a file"}), shown);
    EXPECT_EQ(parsed({"--touch-recording", "a file", "show"}), shown);
    EXPECT_EQ(startArguments(shown), (std::vector<std::string>{"--show", "--touch-recording", "a file"}));
    EXPECT_EQ(startArguments(*parsed({})), std::vector<std::string>{});
    const std::vector<std::vector<std::string>> senseless{{"--touch-recording"},
                                                          {"--touch-recording", ""},
                                                          {"hide", "--touch-recording", "a"},
                                                          {"--touch-recording", "a", "--touch-recording", "b"}};
    for (const auto &words : senseless)
        EXPECT_FALSE(parsed(words)) << words.front() << words.size();
}

} // namespace
} // namespace Orbita
