#include "command_line.h"
#include "support/leftovers.h"
#include "unit/common/child.h"

#include <keld-common/channel.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tests;
using keld_common::findCommand;
using keld_common::splitCommand;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

TEST(SplitCommand, SeparatesWordsAtBlanksAndTabs)
{
    EXPECT_THAT(splitCommand("  a b\t\tc "), Optional(ElementsAre("a", "b", "c")));
}

TEST(SplitCommand, FindsNoWordInNothing)
{
    EXPECT_THAT(splitCommand(""), Optional(IsEmpty()));
    EXPECT_THAT(splitCommand(" \t "), Optional(IsEmpty()));
}

TEST(SplitCommand, KeepsBlanksInQuotes)
{
    EXPECT_THAT(splitCommand("'a b' \"c d\" e' 'f"), Optional(ElementsAre("a b", "c d", "e f")));
}

TEST(SplitCommand, TakesEmptyQuotesForAWord)
{
    EXPECT_THAT(splitCommand("a '' \"\""), Optional(ElementsAre("a", "", "")));
}

TEST(SplitCommand, KeepsAnythingInSingleQuotes)
{
    EXPECT_THAT(splitCommand(R"('a\b"c')"), Optional(ElementsAre(R"(a\b"c)")));
}

TEST(SplitCommand, EscapesQuoteAndBackslashInDoubleQuotes)
{
    EXPECT_THAT(splitCommand(R"("a\"b\\c\d'e")"), Optional(ElementsAre(R"(a"b\c\d'e)")));
}

TEST(SplitCommand, EscapesAnyCharacterOutsideQuotes)
{
    EXPECT_THAT(splitCommand(R"(a\ b \'c \\ \d)"), Optional(ElementsAre("a b", "'c", "\\", "d")));
}

TEST(SplitCommand, ExpandsNothing)
{
    EXPECT_THAT(splitCommand("$HOME * ~ `a` $(b) a;b a|b >c &"),
                Optional(ElementsAre("$HOME", "*", "~", "`a`", "$(b)", "a;b", "a|b", ">c", "&")));
}

TEST(SplitCommand, RefusesAnOpenQuoteAndALastBackslash)
{
    for (char const * command : {"a 'b", "a \"b", "'", "\"", R"("a\")", "a \\"})
        EXPECT_EQ(splitCommand(command), std::nullopt) << command;
}

class FindCommand : public testing::Test
{
protected:
    LeftoverGuard m_Guard;
    TemporaryDirectory m_Directory;
};

TEST_F(FindCommand, TakesThePathOfAnExecutableFileAsAWhole)
{
    std::string const path = m_Directory / "a 'b \"c \\d";
    writeScript(path, "#!/bin/sh\n");
    auto const found = findCommand(path);
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->m_File, path);
    EXPECT_THAT(found->m_Words, ElementsAre(path));
    EXPECT_NE(ServerQueryExist(path.c_str()), 0);
}

TEST_F(FindCommand, SplitsWhatIsNoFileAsAWhole)
{
    std::string const path = m_Directory / "tool";
    writeScript(path, "#!/bin/sh\n");
    auto const found = findCommand(path + " a 'b c'");
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->m_File, path);
    EXPECT_THAT(found->m_Words, ElementsAre(path, "a", "b c"));
}

TEST_F(FindCommand, FindsAQuotedPathWithBlanks)
{
    std::string const path = m_Directory / "my tool";
    writeScript(path, "#!/bin/sh\n");
    auto const found = findCommand("\"" + path + "\" x");
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->m_File, path);
}

TEST_F(FindCommand, SearchesANameWithoutASlashAlongPath)
{
    std::filesystem::create_directory(m_Directory / "first");
    std::filesystem::create_directories(m_Directory / "second/tool");
    std::filesystem::create_directory(m_Directory / "third");
    std::ofstream(m_Directory / "first/tool") << "not executable";
    writeScript(m_Directory / "third/tool", "#!/bin/sh\n");
    ScopedEnvironment const path("PATH", (m_Directory / "first") + ":" + (m_Directory / "second") +
                                             ":" + (m_Directory / "third"));
    auto const found = findCommand("tool a");
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->m_File, m_Directory / "third/tool");
    EXPECT_THAT(found->m_Words, ElementsAre("tool", "a"));
}

TEST_F(FindCommand, SearchesTheUsualDirectoriesWithoutPath)
{
    ScopedEnvironment const path("PATH", std::nullopt);
    EXPECT_TRUE(findCommand("sh").has_value());
}

TEST_F(FindCommand, TakesAnEmptyElementOfPathForTheWorkingDirectory)
{
    writeScript(m_Directory / "tool", "#!/bin/sh\n");
    auto const before = std::filesystem::current_path();
    std::filesystem::current_path(m_Directory.path());
    ScopedEnvironment const path("PATH", "/nowhere:");
    EXPECT_TRUE(findCommand("tool").has_value());
    std::filesystem::current_path(before);
}

TEST_F(FindCommand, LeavesTheWorkingDirectoryOutOtherwise)
{
    writeScript(m_Directory / "tool", "#!/bin/sh\n");
    auto const before = std::filesystem::current_path();
    std::filesystem::current_path(m_Directory.path());
    ScopedEnvironment const path("PATH", "/nowhere");
    EXPECT_FALSE(findCommand("tool").has_value());
    EXPECT_TRUE(findCommand("./tool").has_value());
    std::filesystem::current_path(before);
}

TEST_F(FindCommand, SaysWhyNothingCanBeStarted)
{
    std::ofstream(m_Directory / "plain") << "not executable";
    ScopedEnvironment const path("PATH", m_Directory.path().string());
    struct Row
    {
        std::string m_Command;
        int m_Error;
    };
    Row const rows[] = {{"", EINVAL},
                        {" \t", EINVAL},
                        {"''", EINVAL},
                        {"/bin/sh 'a", EINVAL},
                        {m_Directory / "missing", ENOENT},
                        {"missing", ENOENT},
                        {m_Directory / "plain", EACCES},
                        {"plain", EACCES},
                        {m_Directory.path().string(), EACCES},
                        {(m_Directory / "plain") + "/x", ENOTDIR}};
    for (Row const & row : rows) {
        errno = 0;
        EXPECT_FALSE(findCommand(row.m_Command).has_value()) << row.m_Command;
        EXPECT_EQ(errno, row.m_Error) << row.m_Command;
        EXPECT_EQ(ServerQueryExist(row.m_Command.c_str()), 0) << row.m_Command;
    }
    EXPECT_EQ(ServerQueryExist(nullptr), 0);
}
