#include "process/keld_program.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

constexpr char const * ThreeQuarters =
    "options;read;frame 123;read;frame 121 i32 75;model 1;frame 120 i64 size;read;frame 126;read;"
    "frame 126";

TEST(KeldProgress, IsPrintedInLinesWhereThereIsNoTerminal)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", ThreeQuarters);
    EXPECT_EQ("Import   0 %\nImport  10 %\nImport  70 %\nImport 100 %\n",
              keld.run({"import", "f.scripted"}).err);
}

TEST(KeldProgress, PutsTheTranslatorsPercentBehindTheHostsOwn)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "options;read;frame 123;read;frame 121 i32 50;"
                                     "frame 120 i32 8;read;frame 126;read;frame 126");
    EXPECT_EQ("Export  10 %\nExport  50 %\nExport  70 %\nExport  90 %\nExport 100 %\n",
              keld.run({"export", "f.scripted"}).err);
}

TEST(KeldProgress, NeverGoesBackwardsAndBearsAnyNumber)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "options;read;frame 123;read;frame 121 i32 75;"
                                     "frame 121 i32 -2147483648;frame 121 i32 20;"
                                     "frame 121 i32 2147483647;frame 120 i64 0;read;frame 126;"
                                     "read;frame 126");
    EXPECT_EQ("Import   0 %\nImport  10 %\nImport  70 %\nImport  90 %\nImport 100 %\n",
              keld.run({"import", "f.scripted"}).err);
}

TEST(KeldProgress, IsNotShownWhenQuiet)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", ThreeQuarters);
    EXPECT_EQ("", keld.run({"import", "--quiet", "f.scripted"}).err);
}

/// What the program writes to a terminal of `columns` columns.
std::string onTerminal(KeldProgram & keld, unsigned short columns,
                       std::vector<std::string> const & arguments)
{
    int terminal = -1;
    int programEnd = -1;
    winsize const size = {24, columns, 0, 0};
    if (openpty(&terminal, &programEnd, nullptr, nullptr, &size) != 0)
        return "no terminal";
    keld.before([terminal, programEnd] {
        dup2(programEnd, STDERR_FILENO);
        close(terminal);
        close(programEnd);
    });
    keld.run(arguments);
    close(programEnd);
    std::string text;
    char block[4096];
    for (ssize_t count; (count = read(terminal, block, sizeof(block))) > 0;)
        text.append(block, static_cast<std::size_t>(count));
    close(terminal);
    return text;
}

std::string bar(int filled, int width, std::string const & percent)
{
    return "\r\x1b[KImport [" + std::string(static_cast<std::size_t>(filled), '#') +
           std::string(static_cast<std::size_t>(width - filled), '.') + "] " + percent;
}

TEST(KeldProgress, IsABarOnATerminalThatGoesAtTheEnd)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", ThreeQuarters);
    EXPECT_EQ(bar(0, 50, "  0 %") + bar(0, 50, "  1 %") + bar(5, 50, " 10 %") +
                  bar(35, 50, " 70 %") + bar(50, 50, "100 %") + "\r\x1b[K",
              onTerminal(keld, 80, {"import", "f.scripted"}));
}

TEST(KeldProgress, FitsIntoANarrowTerminal)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", ThreeQuarters);
    // 39 columns less the label, the percentage, the brackets and the blanks.
    EXPECT_THAT(onTerminal(keld, 40, {"import", "f.scripted"}), HasSubstr(bar(16, 24, " 70 %")));
}

TEST(KeldProgress, IsANumberAloneOnAVeryNarrowTerminal)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", ThreeQuarters);
    std::string const text = onTerminal(keld, 20, {"import", "f.scripted"});
    EXPECT_THAT(text, HasSubstr("\r\x1b[K 70 %\r"));
    EXPECT_THAT(text, Not(HasSubstr("#")));
}

TEST(KeldProgress, MakesRoomForWhatTheTranslatorPrints)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    EXPECT_THAT(onTerminal(keld, 80, {"export", "succeed.kit"}),
                HasSubstr("\r\x1b[Kkit_translator: a message\r\n"));
}

} // namespace
