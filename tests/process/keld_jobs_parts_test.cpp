#include "batch/batch_table.h"
#include "batch/captured_output.h"
#include "batch/records.h"
#include "text_width.h"

#include <gmock/gmock.h>

namespace {

using namespace std::chrono_literals;
using namespace keld;

TEST(TextWidth, CountsColumnsAndNotBytes)
{
    EXPECT_EQ(0U, textWidth(""));
    EXPECT_EQ(5U, textWidth("Teil1"));
    EXPECT_EQ(3U, textWidth("\u00e4\u00f6\u00fc"));
    EXPECT_EQ(4U, textWidth("\u90e8\u54c1"));
    EXPECT_EQ(1U, textWidth("a\u0301")) << "a combining accent";
    EXPECT_EQ(2U, textWidth("\U0001f600"));
    EXPECT_EQ(3U, textWidth("a\xff"
                            "b"))
        << "a byte that is no UTF-8";
}

TEST(TextWidth, ShortensInTheMiddle)
{
    EXPECT_EQ("assembly.step", shortened("assembly.step", 13));
    EXPECT_EQ("assem....step", shortened("assembly-of-many.step", 13));
    EXPECT_EQ("assemb...y.step", shortened("assembly-of-many.step", 15));
    EXPECT_EQ("abcd...wxyz", shortened("abcdefghijklmnopqrstuvwxyz", 11));
    EXPECT_EQ("abcd...vwxyz", shortened("abcdefghijklmnopqrstuvwxyz", 12));
}

TEST(TextWidth, LeavesTheEndAloneWhereThereIsNoRoomForMore)
{
    EXPECT_EQ("tuvwxyz", shortened("abcdefghijklmnopqrstuvwxyz", 7));
    EXPECT_EQ("", shortened("abc", 0));
}

TEST(TextWidth, ShortensBetweenCharacters)
{
    // Two columns each: 3 and 3 of them beside the gap leave a column free.
    EXPECT_EQ("\u90e8\u54c1...\u56f3\u9762", shortened("\u90e8\u54c1\u7532\u4e59\u56f3\u9762", 11));
    // A mark is not parted from what it belongs to.
    std::string const accented = "e\u0301";
    std::string many;
    for (int i = 0; i < 20; ++i)
        many += accented;
    std::string const cut = shortened(many, 9);
    EXPECT_EQ(accented + accented + accented + "..." + accented + accented + accented, cut);
}

TEST(TextWidth, PadsToColumns)
{
    EXPECT_EQ("\u90e8  ", padded("\u90e8", 4));
    EXPECT_EQ("  \u90e8", paddedLeft("\u90e8", 4));
    EXPECT_EQ("abc", padded("abc", 2));
}

TEST(CapturedOutput, IsMadeOfSafeLines)
{
    CapturedOutput output;
    EXPECT_TRUE(output.empty());
    output.add("a\tb\r\n\x1b[2J");
    output.add("c");
    EXPECT_FALSE(output.empty());
    EXPECT_EQ("a\tb\n\\x1b[2Jc\n", output.text());
}

TEST(CapturedOutput, KeepsStartAndEndOfVeryMuch)
{
    constexpr std::size_t Kept = 4 << 20;
    CapturedOutput output;
    std::string const block(1 << 20, 'x');
    output.add("start");
    for (int i = 0; i < 100; ++i)
        output.add(block);
    output.add("end");

    std::string const text = output.text();

    EXPECT_THAT(text.substr(0, 6), "startx");
    EXPECT_EQ("xend\n", text.substr(text.size() - 5));
    EXPECT_THAT(text, testing::HasSubstr(" bytes are left out here]\n"));
    EXPECT_LE(text.size(), 3 * Kept + 100);
    EXPECT_GE(text.size(), 2 * Kept);
}

TEST(Records, CarryProgressAndResult)
{
    FileResult sent;
    sent.code = NoAnswer;
    sent.reason = "two\nlines";
    sent.report = "/r/report.html";
    sent.counts = {1, 2, 3, 4, 18446744073709551615ULL, 6};
    std::string const bytes = progressRecord(40) + progressRecord(70) + resultRecord(sent);
    RecordReader reader;
    EXPECT_EQ(-1, reader.percent());
    for (std::size_t i = 0; i + 1 < bytes.size(); ++i)
        reader.add(bytes.substr(i, 1));
    EXPECT_FALSE(reader.hasResult()) << "the last line has no end yet";
    reader.add("\n");

    ASSERT_TRUE(reader.hasResult());
    EXPECT_EQ(70, reader.percent());
    EXPECT_EQ(NoAnswer, reader.result().code);
    EXPECT_EQ("two\\x0alines", reader.result().reason);
    EXPECT_EQ("/r/report.html", reader.result().report);
    EXPECT_EQ(sent.counts, reader.result().counts);
}

BatchRow row(std::string const & name, ExitCode code, std::string const & reason,
             std::array<unsigned long long, FileCounts> const & counts)
{
    return {name, {code, reason, "", counts}, 1240ms};
}

TEST(BatchTable, ShowsTheCountsThatAreThere)
{
    EXPECT_EQ("file    result       time  parts  bodies  faces  lost\n"
              "a.step  completed   1.2 s      1       2      3     0\n"
              "b.step  cancelled   1.2 s\n"
              "  stopped.\n"
              "c.step  failed      1.2 s      1       1     99     1\n"
              "  the translator ended.\n"
              "total              61.0 s      2       3    102     1\n"
              "1 of 3 files completed, 1 failed, 1 cancelled.\n",
              batchTable({row("a.step", Success, "", {0, 1, 2, 3, 0, 0}),
                          row("b.step", RunCancelled, "stopped.", {}),
                          row("c.step", NoAnswer, "the translator ended.", {0, 1, 1, 99, 0, 1})},
                         61s, AnyWidth));
}

TEST(BatchTable, SaysWhereReportsAre)
{
    BatchRow reported = row("a.step", Success, "", {});
    reported.result.report = "/r/a.step/report.html";
    EXPECT_EQ("file    result      time  lost\n"
              "a.step  completed  1.2 s     0\n"
              "  report: /r/a.step/report.html\n"
              "total              1.2 s     0\n"
              "1 of 1 files completed.\n",
              batchTable({reported}, 1240ms, AnyWidth));
}

TEST(BatchTable, ShortensNamesToFit)
{
    EXPECT_EQ(
        "file          result      time  faces  lost\n"
        "a-ra....step  completed  1.2 s      3     0\n"
        "total                    1.2 s      3     0\n"
        "1 of 1 files completed.\n",
        batchTable({row("a-rather-long-name.step", Success, "", {0, 0, 0, 3, 0, 0})}, 1240ms, 43));
}

TEST(BatchTable, IsParagraphsWhereItDoesNotFit)
{
    EXPECT_EQ("a-rather...name.step\n"
              "  completed  1.2 s,\n"
              "  faces: 3, lost: 0\n"
              "b.step\n"
              "  failed  1.2 s\n"
              "  the file could not\n"
              "  be opened.\n"
              "total\n"
              "  2.0 s, faces: 3,\n"
              "  lost: 0\n"
              "  1 of 2 files\n"
              "  completed, 1\n"
              "  failed.\n",
              batchTable({row("a-rather-long-name.step", Success, "", {0, 0, 0, 3, 0, 0}),
                          row("b.step", RunFailed, "the file could not be opened.", {})},
                         2000ms, 20));
}

} // namespace
