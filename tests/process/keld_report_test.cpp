#include "process/keld_program.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using tests::contentOf;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

/// What stands behind `prefix` on its line of `text`.
std::string behind(std::string const & text, std::string const & prefix)
{
    std::size_t const start = text.find(prefix);
    if (start == std::string::npos)
        return {};
    std::size_t const end = text.find('\n', start);
    return text.substr(start + prefix.size(), end - start - prefix.size());
}

TEST(KeldReport, IsKeptWhereTheUserWantsIt)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "1 2 3\n");

    Ended const ended = keld.run({"import", "-q", "--report", "new/dir", "f.xyz"});

    EXPECT_EQ(0, ended.code);
    std::string const path = behind(ended.err, "Report: ");
    EXPECT_EQ(keld.files() / "new/dir", std::filesystem::path(path).parent_path());
    EXPECT_THAT(std::filesystem::path(path).filename(),
                MatchesRegex("transl_tk_report_[0-9]+\\.log"));
    EXPECT_THAT(contentOf(path), HasSubstr("|EXEC_LOG: Executable path: "));
    EXPECT_THAT(contentOf(path),
                HasSubstr("|COMMAND_LOG: Command to launch translator executable"));
}

TEST(KeldReport, ComesWithTheTranslatorsOwn)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "1 2 3\n");

    keld.run({"convert", "-q", "--report", ".", "f.xyz", "out.xyz"});

    for (char const * run : {"import", "export"}) {
        std::filesystem::directory_iterator const entry(keld.files() / run);
        ASSERT_NE(entry, std::filesystem::directory_iterator());
        EXPECT_THAT(entry->path().filename(), MatchesRegex("transl_tk_report_[0-9]+\\.log"));
        EXPECT_THAT(contentOf(entry->path()), HasSubstr(" VORN_EXEC_DIR   /"));
    }
}

TEST(KeldReport, IsKeptOfARunThatFails)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    Ended const ended = keld.run({"import", "-q", "--report", "r", "missing.xyz"});
    EXPECT_EQ(1, ended.code);
    EXPECT_THAT(contentOf(behind(ended.err, "Report: ")), HasSubstr("|COMMAND_LOG: "));
}

TEST(KeldReport, ComesWithADumpOfATranslatorThatCrashes)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    Ended const ended = keld.run({"import", "-q", "--report", "r", "crash.kit"});

    EXPECT_EQ(4, ended.code);
    std::string const path = behind(ended.err, "Crash dump: ");
    EXPECT_EQ(keld.files() / "r/import", std::filesystem::path(path).parent_path());
    EXPECT_THAT(contentOf(path), HasSubstr("SIGSEGV"));
}

TEST(KeldReport, IsNotMadeUnlessAskedFor)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "1 2 3\n");
    EXPECT_THAT(keld.run({"import", "-q", "f.xyz"}).err, Not(HasSubstr("Report")));
    EXPECT_EQ(std::set<std::string>{"f.xyz"}, keld.files().names());
}

TEST(KeldReport, InAPlaceThatCannotBeMadeEndsTheRunBeforeItBegins)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "1 2 3\n");
    Ended const ended = keld.run({"import", "-q", "--report", "f.xyz/r", "f.xyz"});
    EXPECT_EQ(7, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_THAT(ended.err, HasSubstr("f.xyz/r"));
}

} // namespace
