// What the program makes of its arguments.
#include "app/command_line.h"

#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

CommandLine parse(std::vector<const char*> arguments) {
    return parseCommandLine(arguments);
}

TEST(CommandLine, AnswersQuestionsAndRefusesWhatItDoesNotKnow) {
    using Request = CommandLine::Request;
    EXPECT_EQ(parse({}).request, Request::run);
    EXPECT_EQ(parse({"--version"}).request, Request::version);
    EXPECT_EQ(parse({"--nonsense", "--help"}).request, Request::help);
    const auto mistake = parse({"--nonsense", "more"});
    EXPECT_EQ(mistake.request, Request::mistake);
    EXPECT_NE(mistake.mistake.find("--nonsense"), std::string::npos);
    EXPECT_NE(mistake.mistake.find("--help"), std::string::npos);
}

}  // namespace
}  // namespace tessellon
