#include "process/keld_program.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace {

using testing::HasSubstr;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

/// The points that an import of `content` prints, and its log.
Ended import(std::string const & content, std::vector<std::string> arguments = {})
{
    KeldProgram keld;
    keld.file("f.xyz", content);
    arguments.insert(arguments.begin(), {"import", "-q", "--list-points", "f.xyz"});
    Ended ended = keld.run(arguments);
    std::size_t const points = ended.out.find("\n1: ");
    ended.out = points == std::string::npos ? "" : ended.out.substr(points + 1);
    return ended;
}

std::string warning(int line, std::string const & fault)
{
    return "    Warning : f.xyz, line " + std::to_string(line) + " holds no point: " + fault +
           ".\n";
}

TEST(XyzTranslator, TakesBlanksTabsCommasAndSemicolons)
{
    LeftoverGuard const guard;
    Ended const ended = import("1 2 3\n4\t5\t6\n7,8,9\n1;2;3\n 4 , 5;\t6 \n+7 8.e0 .9e1");
    EXPECT_EQ("1: 1 2 3\n2: 4 5 6\n3: 7 8 9\n4: 1 2 3\n5: 4 5 6\n6: 7 8 9\n", ended.out);
    EXPECT_EQ("", ended.err);
}

TEST(XyzTranslator, PassesOverCommentsAndEmptyLines)
{
    LeftoverGuard const guard;
    Ended const ended = import("# 1 2 3\n\n   \n\t# x\n1 2 3\n#");
    EXPECT_EQ("1: 1 2 3\n", ended.out);
    EXPECT_EQ("", ended.err);
}

TEST(XyzTranslator, TakesLinesThatEndInCarriageReturns)
{
    LeftoverGuard const guard;
    Ended const ended = import("1 2 3\r\n# c\r\n\r\n4 5 6\r\n");
    EXPECT_EQ("1: 1 2 3\n2: 4 5 6\n", ended.out);
    EXPECT_EQ("", ended.err);
}

TEST(XyzTranslator, NamesEachLineThatIsNoPointAndReadsTheRest)
{
    LeftoverGuard const guard;
    Ended const ended = import("1 2 3\nabc\n1\n1 2\n1 2 3 4\n1,,2\n1 2x 3\n4 5 6\n");
    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("1: 1 2 3\n2: 4 5 6\n", ended.out);
    EXPECT_EQ(warning(2, "\"abc\" is no number") + warning(3, "only one number") +
                  warning(4, "only two numbers") + warning(5, "more than three numbers") +
                  warning(6, "a number is missing") + warning(7, "\"2x\" is no number"),
              ended.err);
}

TEST(XyzTranslator, NamesNumbersThatAreOutOfRange)
{
    LeftoverGuard const guard;
    Ended const ended = import("1e999 0 0\n0 -1e400 0\n0 0 1e-999\n1 2 3\n");
    EXPECT_EQ("1: 1 2 3\n", ended.out);
    EXPECT_EQ(warning(1, "the number \"1e999\" is out of range") +
                  warning(2, "the number \"-1e400\" is out of range") +
                  warning(3, "the number \"1e-999\" is out of range"),
              ended.err);
}

TEST(XyzTranslator, TakesNoPositionThatIsNotFinite)
{
    LeftoverGuard const guard;
    Ended const ended = import("inf 0 0\n0 -nan 0\n1 2 3\n");
    EXPECT_EQ("1: 1 2 3\n", ended.out);
    EXPECT_EQ(warning(1, "\"inf\" is not a finite number") +
                  warning(2, "\"-nan\" is not a finite number"),
              ended.err);
}

TEST(XyzTranslator, QuotesForeignBytesSoThatTheyDoNoHarm)
{
    LeftoverGuard const guard;
    Ended const ended = import("\x1b[2J\xff\n" + std::string(100, 'y') + "\n1 2 3\n");
    EXPECT_EQ(warning(1, "\"?[2J?\" is no number") +
                  warning(2, '"' + std::string(40, 'y') + "...\" is no number"),
              ended.err);
}

TEST(XyzTranslator, CountsTheLinesBeyondTheFirstTen)
{
    LeftoverGuard const guard;
    std::string content = "1 2 3\n";
    std::string expected;
    for (int line = 2; line <= 33; ++line) {
        content += "x\n";
        if (line <= 11)
            expected += warning(line, "\"x\" is no number");
    }
    EXPECT_EQ(expected + "    Warning : 22 more lines of f.xyz hold no point.\n",
              import(content).err);
}

TEST(XyzTranslator, CountsTheLinesBeyondTheLimitOfItsOption)
{
    LeftoverGuard const guard;
    EXPECT_EQ(warning(1, "\"a\" is no number") +
                  "    Warning : 2 more lines of f.xyz hold no point.\n",
              import("a\nb\nc\n1 2 3\n", {"-o", "warning_limit=1"}).err);
    EXPECT_EQ("    Warning : 3 more lines of f.xyz hold no point.\n",
              import("a\nb\nc\n1 2 3\n", {"-o", "warning_limit=-1"}).err);
}

TEST(XyzTranslator, ReadsLinesAcrossTheEndsOfItsBuffer)
{
    LeftoverGuard const guard;
    std::string content;
    for (int i = 0; i < 200000; ++i)
        content += std::to_string(i) + ".5 0.125 7\n";
    KeldProgram keld;
    keld.file("in.xyz", content);

    ASSERT_EQ(0, keld.run({"convert", "-q", "in.xyz", "out.xyz"}).code);
    EXPECT_TRUE(content == tests::contentOf(keld.files() / "out.xyz"));
}

TEST(XyzTranslator, PassesOverALineThatIsLongerThanItsBuffer)
{
    LeftoverGuard const guard;
    Ended const ended =
        import("1 2 3\n" + std::string(3 << 20, '1') + "\n4 5 6\n" + std::string(2 << 20, '1'));
    EXPECT_EQ("1: 1 2 3\n2: 4 5 6\n", ended.out);
    EXPECT_EQ(warning(2, "the line is too long") + warning(4, "the line is too long"), ended.err);
}

TEST(XyzTranslator, ReadsTheSameUnderAForeignLocale)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.set("LC_ALL", "de_DE.UTF-8");
    keld.file("in.xyz", "1.5 2.5 3.5\n");

    ASSERT_EQ(0, keld.run({"convert", "-q", "in.xyz", "out.xyz"}).code);
    EXPECT_EQ("1.5 2.5 3.5\n", tests::contentOf(keld.files() / "out.xyz"));
}

void expectFailure(KeldProgram & keld, std::string const & words, std::string const & status)
{
    Ended const ended = keld.run({"import", "-q", "f.xyz"});
    EXPECT_EQ(1, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ("    Error : " + words + "\nkeld: f.xyz: " + status + "\n", ended.err);
}

TEST(XyzTranslator, SaysThatTheFileIsMissing)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    expectFailure(keld, "Cannot read f.xyz: No such file or directory.", "Failed! (exit status 0)");
}

TEST(XyzTranslator, SaysThatTheFileCannotBeRead)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::filesystem::permissions(keld.file("f.xyz", "1 2 3\n"), std::filesystem::perms::none);
    keld.before(tests::obeyPermissions);
    expectFailure(keld, "Cannot read f.xyz: Permission denied.", "Failed! (exit status 0)");
}

TEST(XyzTranslator, SaysThatTheFileIsADirectory)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::filesystem::create_directory(keld.files() / "f.xyz");
    expectFailure(keld, "Cannot read f.xyz: Is a directory.", "Failed! (exit status 0)");
}

TEST(XyzTranslator, DoesNotWaitForAPipeUnderTheName)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    ASSERT_EQ(0, mkfifo((keld.files() / "f.xyz").c_str(), 0600));
    expectFailure(keld, "Cannot read f.xyz: it is no regular file.", "Failed! (exit status 0)");
}

TEST(XyzTranslator, SaysThatTheFileIsEmpty)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "");
    expectFailure(keld, "f.xyz is empty.", "Failed! Model is empty (exit status 3)");
}

TEST(XyzTranslator, SaysThatTheFileHoldsNoPoint)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "# nothing here\n");
    expectFailure(keld, "f.xyz holds no point.", "Failed! Model is empty (exit status 3)");
}

TEST(XyzTranslator, NamesBadLinesAlsoWhenNoPointIsLeft)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "x\n");
    Ended const ended = keld.run({"import", "-q", "f.xyz"});
    EXPECT_EQ(1, ended.code);
    EXPECT_THAT(ended.err, HasSubstr(warning(1, "\"x\" is no number")));
    EXPECT_THAT(ended.err, HasSubstr("f.xyz holds no point."));
}

} // namespace
