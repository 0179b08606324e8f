#include "process/keld_program.h"
#include "process/other_programs.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::Answer;
using tests::answerOf;
using tests::contentOf;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

constexpr int NotAllowedHere = 77;

/// A run with a report, of the model that the translator for tests makes for a name.
class Report : public testing::Test
{
protected:
    Report() { m_Keld.install("kit", KELD_TEST_KIT_TRANSLATOR); }

    Ended import(std::string const & name)
    {
        return m_Keld.run({"import", "-q", "--report", "r", name + ".kit"});
    }

    std::string path() const { return m_Keld.files() / "r/report.html"; }

    /// The page of an import.
    std::string page(std::string const & name)
    {
        import(name);
        return contentOf(path());
    }

    LeftoverGuard const m_Guard;
    KeldProgram m_Keld;
};

using KeldReportPage = Report;

std::size_t countOf(std::string const & text, std::string const & part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

std::string row(std::string const & kind, std::string const & held, int failed, int reported)
{
    auto const cell = [](std::string const & number) {
        return "<td" + std::string(number == "0" ? " class=\"none\"" : "") + ">" + number + "</td>";
    };
    std::string const first =
        held.empty() ? "<td class=\"none\" title=\"not counted\">&ndash;</td>" : cell(held);
    return "<th scope=\"row\">" + kind + "</th>" + first + cell(std::to_string(failed)) +
           cell(std::to_string(reported)) + "</tr>";
}

TEST_F(KeldReportPage, SaysWhatCameOfTheFile)
{
    Ended const ended = import("product");

    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("Report page: " + path() + "\n"));
    std::string const page = contentOf(path());
    EXPECT_THAT(page, HasSubstr("<title>product.kit - import report</title>"));
    EXPECT_THAT(page, HasSubstr("<h1><bdi class=\"file\">product.kit</bdi></h1>"));
    EXPECT_THAT(page, HasSubstr("<span class=\"badge completed\">completed</span> "
                                "Completed! (exit status 8)"));
    EXPECT_THAT(page, HasSubstr("<dt>File</dt><dd><bdi class=\"path\">product.kit</bdi></dd>"));
    EXPECT_THAT(page, HasSubstr("<bdi class=\"model\">Pump</bdi>"));
    EXPECT_THAT(page, HasSubstr(row("Assembly", "2", 0, 0)));
    EXPECT_THAT(page, HasSubstr(row("Part", "2", 0, 1)));
    EXPECT_THAT(page, HasSubstr(row("Instance", "2", 0, 0)));
    EXPECT_THAT(page, HasSubstr(row("Point", "1", 0, 0)));
    EXPECT_THAT(page, HasSubstr(row("Attributes", "2", 0, 0)));
    EXPECT_THAT(page, HasSubstr(row("Annotations", "1", 0, 0)));
    EXPECT_THAT(page, HasSubstr(row("Vertex", "1", 0, 0)));
    EXPECT_THAT(page, HasSubstr(row("total", "11", 0, 1)));
    EXPECT_THAT(page, Not(HasSubstr("Loop")));
}

TEST_F(KeldReportPage, IsTitledByTheNameOfTheFileWithoutFolders)
{
    std::filesystem::create_directory(m_Keld.files() / "a folder");
    std::string const page = this->page("a folder/product");
    EXPECT_THAT(page, HasSubstr("<title>product.kit - import report</title>"));
    EXPECT_THAT(page, HasSubstr("<h1><bdi class=\"file\">product.kit</bdi></h1>"));
    EXPECT_THAT(page, HasSubstr("<bdi class=\"path\">a folder/product.kit</bdi>"));
}

TEST_F(KeldReportPage, ShowsTheProductTreeWithInstancesMarked)
{
    std::string const page = this->page("product");
    auto const node = [](std::string const & classes, std::string const & name,
                         std::string const & type) {
        return "<li class=\"" + classes + "\"><bdi class=\"name\">" + name +
               "</bdi> <span class=\"type\">" + type + "</span></li>\n";
    };
    EXPECT_THAT(page, HasSubstr(node("assembly l0", "Pump", "assembly, millimetres") +
                                node("part l1", "Housing", "part, inches x 2") +
                                node("assembly l1", "Rotor", "assembly, millimetres") +
                                node("part l2", "Blade", "part, length type 99") +
                                node("instance l2", "Blade", "instance of part") +
                                node("instance l1", "Rotor", "instance of assembly") + "</ul>"));
}

TEST_F(KeldReportPage, CallsTheModelByTheOneComponentThatIsPlacedNowhere)
{
    EXPECT_THAT(page("placed"), HasSubstr("<bdi class=\"model\">machine</bdi>"));
}

TEST_F(KeldReportPage, ShowsPartsWithoutAnAssemblyOnTop)
{
    std::string const page = this->page("parts");
    EXPECT_THAT(page, HasSubstr("part l0\"><bdi class=\"name\">first</bdi>"));
    EXPECT_THAT(page, HasSubstr("part l0\"><bdi class=\"name\">second</bdi>"));
    EXPECT_THAT(page, HasSubstr("<bdi class=\"model\">second</bdi>"));
    EXPECT_THAT(page, Not(HasSubstr("<li class=\"assembly")));
    EXPECT_THAT(page, HasSubstr(row("Part", "2", 0, 0) + "\n<tr class=\"total\">"));
}

TEST_F(KeldReportPage, SaysThatNothingWasLost)
{
    EXPECT_THAT(page("product"), HasSubstr("Nothing was lost"));
}

TEST_F(KeldReportPage, SaysOfEachKindWhatWasLost)
{
    std::string const page = this->page("lost");
    EXPECT_THAT(page, Not(HasSubstr("Nothing was lost")));
    auto const lost = [](std::string const & what, std::string const & rows) {
        return "<li>" + what + " failed\n<ul class=\"rows\">\n" + rows + "</ul></li>\n";
    };
    auto const text = [](std::string const & words) {
        return "<li><bdi class=\"text\">" + words + "</bdi></li>\n";
    };
    EXPECT_THAT(
        page, HasSubstr("<ul class=\"lost\">\n" + lost("Edge: <b>1</b>", text("Edge 5 is gone.")) +
                        lost("Face: <b>2</b>",
                             text("Face 12 has no border.") + text("Face 13 has no border.")) +
                        lost("Kind 77: <b>1</b>", text("Nothing is known of this kind.")) +
                        "<li class=\"total\">In all: <b>4</b> failed</li>\n</ul>"));
    EXPECT_THAT(page, HasSubstr(row("Edge", "0", 1, 2)));
    EXPECT_THAT(page, HasSubstr(row("Loop", "0", 0, 1)));
    EXPECT_THAT(page, HasSubstr(row("Face", "0", 2, 2)));
    EXPECT_THAT(page, HasSubstr(row("Model", "", 0, 1)));
    EXPECT_THAT(page, HasSubstr(row("Kind 77", "", 1, 1)));
    EXPECT_THAT(page, HasSubstr(row("total", "1", 4, 7)));
    EXPECT_THAT(page, HasSubstr("<b>4</b> failed"));
    EXPECT_THAT(page, HasSubstr("<b>1</b> warning<"));
    EXPECT_THAT(page, HasSubstr("<b>1</b> note<"));
}

TEST_F(KeldReportPage, ShowsFiveLossesOfAKindAndSaysHowManyMoreThereAre)
{
    std::string const page = this->page("many-lost");
    std::string const lost = page.substr(page.find("id=\"lost\""),
                                         page.find("id=\"counts\"") - page.find("id=\"lost\""));
    EXPECT_EQ(5U, countOf(lost, "<bdi class=\"text\">"));
    EXPECT_THAT(lost, HasSubstr("Body: <b>8</b> failed"));
    EXPECT_THAT(lost, HasSubstr("<li class=\"more\">and 3 more in the report below</li>"));
    EXPECT_THAT(page, HasSubstr(">Body 8 is gone.<"));
}

TEST_F(KeldReportPage, ShowsEntriesWithTheirTypesAndKinds)
{
    std::string const page = this->page("lost");
    auto const entry = [](std::string const & type, std::string const & name,
                          std::string const & kind, std::string const & text) {
        return "<li><span class=\"badge " + type + "\">" + name + "</span> <span class=\"about\">" +
               kind + "</span> <bdi class=\"text\">" + text + "</bdi></li>\n";
    };
    EXPECT_THAT(page, HasSubstr(entry("error", "error", "Face", "Face 12 has no border.") +
                                entry("error", "error", "Face", "Face 13 has no border.") +
                                entry("warning", "warning", "Edge", "Edge 4 is short.")));
    EXPECT_THAT(page,
                HasSubstr(entry("error", "error", "Kind 77", "Nothing is known of this kind.") +
                          entry("other", "type 9", "Loop", "Nothing is known of this type.") +
                          entry("information", "information", "Model", "A note.")));
}

TEST_F(KeldReportPage, TakesAnErrorInTheLogForALoss)
{
    std::string const page = this->page("log-error");
    EXPECT_THAT(page, Not(HasSubstr("Nothing was lost")));
    EXPECT_THAT(page, HasSubstr("The translator reported no entity as failed."));
    EXPECT_THAT(page, HasSubstr("The log holds 1 error."));
    EXPECT_THAT(page, HasSubstr("<li class=\"error\"><span class=\"badge error\">Error</span> "
                                "<bdi class=\"text\">a face is gone</bdi>"));
}

TEST_F(KeldReportPage, ShowsTheLogListByList)
{
    EXPECT_THAT(page("lists"),
                HasSubstr("<h3>List 1</h3>\n<ul class=\"rows\">\n"
                          "<li class=\"text\"><bdi class=\"text\">plain</bdi></li>\n"
                          "<li class=\"indented\"><bdi class=\"text\">set in</bdi></li>\n</ul>\n"
                          "<h3>List 2</h3>\n<ul class=\"rows\">\n"
                          "<li class=\"warning\"><span class=\"badge warning\">Warning</span> "
                          "<bdi class=\"text\">in two</bdi></li>\n</ul>\n"
                          "<h3>List 3</h3>\n<ul class=\"rows\">\n"
                          "<li class=\"text quiet\"><bdi class=\"text\">in three</bdi> "
                          "<span class=\"none\">(not shown in the run)</span></li>\n</ul>\n"
                          "<h3>List 6</h3>\n<ul class=\"rows\">\n"
                          "<li class=\"text\"><bdi class=\"text\">in six</bdi></li>\n</ul>\n"));
}

TEST_F(KeldReportPage, IsWrittenForARunThatFails)
{
    EXPECT_EQ(1, import("fail-2").code);
    std::string const page = contentOf(path());
    EXPECT_THAT(page, HasSubstr("<span class=\"badge failed\">failed</span> "
                                "Failed! Unsupported file type (exit status 2)"));
    EXPECT_THAT(page, HasSubstr("The run failed."));
    EXPECT_THAT(page, HasSubstr("as the name says"));
    EXPECT_THAT(page, HasSubstr("<bdi class=\"model\">fail-2.kit</bdi>"));
}

TEST_F(KeldReportPage, IsWrittenForARunThatIsCancelled)
{
    EXPECT_EQ(6, import("fail-9").code);
    std::string const page = contentOf(path());
    EXPECT_THAT(page, HasSubstr("<span class=\"badge cancelled\">cancelled</span> "
                                "Server cancelled (exit status 9)"));
    EXPECT_THAT(page, HasSubstr("The run was cancelled"));
    EXPECT_THAT(page, HasSubstr("<dd><span class=\"none\">without a name</span></dd>"));
}

TEST_F(KeldReportPage, IsWrittenForATranslatorThatCrashes)
{
    EXPECT_EQ(4, import("crash").code);
    std::string const page = contentOf(path());
    EXPECT_THAT(page, HasSubstr("<span class=\"badge failed\">failed</span>"));
    EXPECT_THAT(page, HasSubstr("the translator ended without an answer"));
    EXPECT_THAT(page, HasSubstr("failed</span></dd>")); // and no words, since nobody said any
    EXPECT_THAT(page, Not(HasSubstr("Nothing was lost")));
}

TEST_F(KeldReportPage, IsNotWrittenWithoutARun)
{
    Ended const ended = m_Keld.run({"import", "-q", "--report", "r", "f.missing"});
    EXPECT_EQ(3, ended.code);
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(KeldReportPage, IsValidHtml)
{
    for (char const * name :
         {"product", "parts", "markup",   "lost",    "many-lost",     "log-error",     "lists",
          "numbers", "deep",  "wide",     "long",    "geometry",      "succeed",       "fail-2",
          "fail-9",  "crash", "controls", "letters", "placed-facets", "crowded-facets"}) {
        import(name);
        EXPECT_EQ("", tests::validatorSays(path())) << name;
    }
}

TEST_F(KeldReportPage, NeedsNoOtherFileAndRunsNothing)
{
    std::string const page = this->page("product");
    for (char const * part : {"http:", "https:", "//", "url(", "@import", "<link", "<script",
                              "src=", "href=", "<iframe", "<object", "onload"})
        EXPECT_THAT(page, Not(HasSubstr(part)));
    EXPECT_THAT(page, HasSubstr("<meta http-equiv=\"Content-Security-Policy\" "
                                "content=\"default-src 'none'; style-src 'unsafe-inline'\">"));
    EXPECT_THAT(page, HasSubstr("<meta name=\"viewport\" content=\"width=device-width, "
                                "initial-scale=1\">"));
    EXPECT_THAT(page, HasSubstr("@media (prefers-color-scheme: dark)"));
}

TEST_F(KeldReportPage, EscapesEveryTextOfTheTranslator)
{
    std::string const page = this->page("markup");
    std::string const script =
        "&lt;script&gt;document.title=&#39;ran&#39;&lt;/script&gt;&lt;img src=x onerror=&quot;"
        "document.title=&#39;ran&#39;&quot;&gt;&amp;amp;&#39;&quot;&lt;/style&gt;&lt;/bdi&gt;"
        "&lt;/title&gt;";
    EXPECT_THAT(page, HasSubstr("<bdi class=\"model\">" + script + "</bdi>"));
    EXPECT_THAT(page, HasSubstr("<bdi class=\"name\">" + script + "</bdi>"));
    EXPECT_THAT(page, HasSubstr("<bdi class=\"text\">entry " + script + "</bdi>"));
    EXPECT_THAT(page, HasSubstr("<bdi class=\"text\">log " + script + "</bdi>"));
    EXPECT_THAT(page, Not(HasSubstr("<script")));
    EXPECT_THAT(page, Not(HasSubstr("<img")));
}

TEST_F(KeldReportPage, EscapesTheNameOfTheFile)
{
    import("<b>&");
    EXPECT_THAT(contentOf(path()), HasSubstr("<bdi class=\"file\">&lt;b&gt;&amp;.kit</bdi>"));
}

TEST_F(KeldReportPage, ShowsControlCharactersAsNumbersAndBrokenTextAsReplacements)
{
    std::string const page = this->page("markup");
    std::string const lost = "\xEF\xBF\xBD";
    EXPECT_THAT(page, HasSubstr(">control \\x01\\x1b[31m\\x7f\\xc2\\x9b end<"));
    EXPECT_THAT(page,
                HasSubstr(">broken " + lost + lost + lost + lost + lost + lost + lost + " utf-8<"));
    EXPECT_THAT(page, HasSubstr(">odd " + lost + lost + lost + " " + lost + lost + lost + lost +
                                " " + lost + " " + lost + lost + "<"));
    EXPECT_THAT(page, HasSubstr(">kept \xc3\xa4 \xe2\x82\xac \xf0\x9f\x94\xa7 name<"));
    EXPECT_THAT(page, HasSubstr(">two\nlines<"));
    EXPECT_THAT(page, HasSubstr(">entry \\x02 " + lost + "<"));
    EXPECT_THAT(page, HasSubstr(">log \\x03 " + lost + "<"));
}

TEST_F(KeldReportPage, HoldsAMegabyteOfTextWhole)
{
    std::string const page = this->page("long");
    EXPECT_EQ(std::size_t{2} << 20, countOf(page, "&lt;"));
    EXPECT_THAT(page.substr(page.find("<section id=\"tree\">"), 200), HasSubstr(">after<"));
    EXPECT_EQ("</html>\n", page.substr(page.size() - 8));
}

TEST_F(KeldReportPage, ShowsADeepTreeOnASmallStackByTheNumbersOfItsLevels)
{
    m_Keld.before([] {
        rlimit const small = {512 * 1024, 512 * 1024};
        if (setrlimit(RLIMIT_STACK, &small) != 0)
            _exit(NotAllowedHere);
    });
    EXPECT_EQ(0, import("deep").code);
    std::string const page = contentOf(path());
    EXPECT_EQ(5001U, countOf(page, "<bdi class=\"name\">"));
    EXPECT_THAT(page, HasSubstr("<li class=\"assembly l12\"><bdi class=\"name\">level@12</bdi>"));
    EXPECT_THAT(page, HasSubstr("<li class=\"assembly l12\"><span class=\"level\">level 13</span> "
                                "<bdi class=\"name\">level@13</bdi>"));
    EXPECT_THAT(page, HasSubstr("<li class=\"part l12\"><span class=\"level\">level 5000</span> "
                                "<bdi class=\"name\">bottom</bdi>"));
}

TEST_F(KeldReportPage, ShowsTenThousandNodesAndSaysHowManyMoreThereAre)
{
    std::string const page = this->page("wide");
    EXPECT_EQ(10000U, countOf(page, "<bdi class=\"name\">"));
    EXPECT_THAT(page, HasSubstr(">And 2001 more; "));
    EXPECT_THAT(page, HasSubstr(row("Part", "12000", 0, 0)));
}

TEST_F(KeldReportPage, ShowsTenThousandKindsAndSaysHowManyMoreThereAre)
{
    std::string const page = this->page("many-kinds");
    EXPECT_EQ(10000U, countOf(page, "<tr class=\"bad\">"));
    EXPECT_EQ(2U, countOf(page, ">And 2000 more; ")); // kinds and entries
    EXPECT_THAT(page, HasSubstr(row("total", "0", 12000, 12000)));
}

TEST_F(KeldReportPage, ReplacesTheOneBeforeAndLeavesNoOtherFile)
{
    import("product");
    EXPECT_THAT(page("lost"), HasSubstr("lost.kit"));
    for (auto const & entry : std::filesystem::directory_iterator(m_Keld.files() / "r")) {
        std::string const name = entry.path().filename();
        EXPECT_TRUE(name == "report.html" || name == "import" ||
                    name.starts_with("transl_tk_report_"))
            << name;
    }
}

TEST_F(KeldReportPage, ThatCannotBeWrittenIsSaidAndChangesASuccessOnly)
{
    std::filesystem::create_directories(path());
    Ended const completed = import("product");
    EXPECT_EQ(7, completed.code);
    EXPECT_THAT(completed.err, HasSubstr("keld: Cannot write " + path() + ": Is a directory.\n"));
    EXPECT_THAT(completed.out, HasSubstr("Completed!"));
    EXPECT_EQ(1, import("fail-0").code);
}

TEST_F(KeldReportPage, InADirectoryThatMayNotBeWrittenIsSaidAndThePageBeforeStays)
{
    std::string const before = page("product");
    std::filesystem::permissions(m_Keld.files() / "r", std::filesystem::perms(0555));
    m_Keld.before(tests::obeyPermissions);
    Ended const ended = import("lost");
    std::filesystem::permissions(m_Keld.files() / "r", std::filesystem::perms(0755));
    EXPECT_EQ(7, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("keld: Cannot write " + path() + ": Permission denied.\n"));
    EXPECT_EQ(before, contentOf(path()));
}

TEST_F(KeldReportPage, OnAFullDiskIsSaid)
{
    std::filesystem::create_directory(m_Keld.files() / "r");
    m_Keld.before([directory = m_Keld.files() / "r"] { tests::mountSmall(directory, "1m"); });
    Ended const ended = import("long");
    if (ended.code == NotAllowedHere)
        GTEST_SKIP() << "Mounting is not allowed here.";
    EXPECT_EQ(7, ended.code);
    EXPECT_THAT(ended.err,
                HasSubstr("keld: Cannot write " + path() + ": No space left on device.\n"));
}

/// The page as a browser understands it: its elements after everything in it has run.
TEST_F(KeldReportPage, ShowsMarkupAsTextInABrowserAndNothingRuns)
{
    if (!tests::isThere("chromium"))
        GTEST_SKIP() << "There is no chromium to look at the page with.";
    import("markup");
    tests::TemporaryDirectory const profile(std::filesystem::current_path(), "keld-browser-");
    Answer const answer =
        answerOf({"timeout", "100", "chromium", "--headless", "--no-sandbox", "--disable-gpu",
                  "--disable-dev-shm-usage", "--disable-crash-reporter", "--no-first-run",
                  "--user-data-dir=" + profile.path().string(), "--window-size=390,844",
                  "--dump-dom", "file://" + path()});

    ASSERT_EQ(0, answer.code) << answer.text;
    std::string const dom = answer.text.substr(answer.text.find("<!DOCTYPE html>"));
    EXPECT_THAT(dom, HasSubstr("<title>markup.kit - import report</title>"));
    EXPECT_EQ(1U, countOf(dom, "<title>"));
    EXPECT_EQ(0U, countOf(dom, "<script"));
    EXPECT_EQ(0U, countOf(dom, "<img"));
    EXPECT_EQ(5U, countOf(dom, "<section id="));
    // What a browser writes of a text: quotes stay, the three other characters are escaped.
    std::string const script = "&lt;script&gt;document.title='ran'&lt;/script&gt;"
                               "&lt;img src=x onerror=\"document.title='ran'\"&gt;&amp;amp;'\""
                               "&lt;/style&gt;&lt;/bdi&gt;&lt;/title&gt;";
    EXPECT_THAT(dom, HasSubstr("<bdi class=\"name\">" + script + "</bdi>"));
    EXPECT_THAT(dom, HasSubstr("<bdi class=\"text\">entry " + script + "</bdi>"));
    EXPECT_THAT(dom, HasSubstr("<bdi class=\"text\">log " + script + "</bdi>"));
}

} // namespace
