#include "process/keld_program.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

TEST(KeldCommandLine, HelpShowsCommandsAndExitCodes)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    Ended const ended = keld.run({"--help"});
    EXPECT_EQ(0, ended.code);
    for (char const * words : {"import", "info", "export", "convert", "translators",
                               "Exit codes:", "4  the translator ended without an answer"})
        EXPECT_THAT(ended.out, HasSubstr(words));
}

TEST(KeldCommandLine, VersionIsThatOfTheToolkit)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    EXPECT_EQ("keld 23.0.0\n", keld.run({"--version"}).out);
}

TEST(KeldCommandLine, WrongOnesEndWithTwoAndASentence)
{
    LeftoverGuard const guard;
    std::vector<std::vector<std::string>> const wrong = {
        {},
        {"import"},
        {"transmogrify"},
        {"import", "a.xyz", "--no-such-option"},
        {"import", "a.xyz", "--points", "-1"},
        {"import", "a.xyz", "--tree", "-1"},
        {"info", "a.xyz", "--points", "1"},
        {"import", "a.xyz", "-o", "noequals"},
        {"import", "a.xyz", "-o", "=value"},
        {"export", "a.xyz", "--point", "1", "2"},
        {"export", "a.xyz", "--points", "many"},
        {"convert", "a.xyz"},
        {"import", ""},
        {"import", "two\nlines.xyz"},
        {"import", std::string(4095, 'a')},
        {"export", std::string(2048, '%')},
    };
    for (auto const & arguments : wrong) {
        KeldProgram keld;
        Ended const ended = keld.run(arguments);
        EXPECT_EQ(2, ended.code) << testing::PrintToString(arguments);
        EXPECT_NE("", ended.err) << testing::PrintToString(arguments);
    }
}

TEST(KeldCommandLine, SaysThatItsOutputCannotBeWritten)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("one.xyz", "1 2 3\n");
    keld.before([] { freopen("/dev/full", "w", stdout); });
    Ended const ended = keld.run({"import", "-q", "one.xyz"});
    EXPECT_EQ(7, ended.code);
    EXPECT_EQ("keld: standard output could not be written.\n", ended.err);
}

} // namespace
