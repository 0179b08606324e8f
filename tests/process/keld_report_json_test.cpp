#include "process/keld_program.h"
#include "process/other_programs.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::pythonSays;

/// A run whose report is JSON.
class KeldReportJson : public testing::Test
{
protected:
    KeldReportJson() { m_Keld.install("kit", KELD_TEST_KIT_TRANSLATOR); }

    Ended import(std::string const & name)
    {
        return m_Keld.run(
            {"import", "-q", "--report", "r", "--report-format", "json", name + ".kit"});
    }

    std::string says(std::string const & expression) const
    {
        return pythonSays(path(), expression);
    }

    std::string path() const { return m_Keld.files() / "r/report.json"; }

    LeftoverGuard const m_Guard;
    KeldProgram m_Keld;
};

TEST_F(KeldReportJson, HasTheseKeysInThisOrder)
{
    Ended const ended = import("lost");
    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("Report data: " + path() + "\n"));
    EXPECT_FALSE(std::filesystem::exists(m_Keld.files() / "r/report.html"));
    EXPECT_EQ("format version file model status lostNothing entryCounts counts total entries log "
              "tree",
              says("' '.join(d)"));
    EXPECT_EQ("keld report 1", says("d['format'], d['version']"));
    EXPECT_EQ("kind name model failed reported", says("' '.join(d['total'])"));
    EXPECT_EQ("kind name type typeName text", says("' '.join(d['entries'][0])"));
}

TEST_F(KeldReportJson, SaysTheSameAsThePage)
{
    import("lost");
    EXPECT_EQ("{'number': 0, 'name': 'completed', 'exitStatus': 8, 'words': 'Completed!', "
              "'explanation': ''}",
              says("d['status']"));
    EXPECT_EQ("lost.kit lost.kit False", says("d['file'], d['model'], d['lostNothing']"));
    EXPECT_EQ("{'information': 1, 'warning': 1, 'error': 4}", says("d['entryCounts']"));
    EXPECT_EQ("[(4, 'Point', 1, 0, 0), (13, 'Edge', 0, 1, 2), (15, 'Loop', 0, 0, 1), "
              "(18, 'Face', 0, 2, 2), (22, 'Model', None, 0, 1), (77, 'Kind 77', None, 1, 1)]",
              says("[tuple(c.values()) for c in d['counts']]"));
    EXPECT_EQ("[35, 'total', 1, 4, 7]", says("list(d['total'].values())"));
    EXPECT_EQ("{'kind': 15, 'name': 'Loop', 'type': 9, 'typeName': 'other', 'text': "
              "'Nothing is known of this type.'}",
              says("d['entries'][5]"));
}

TEST_F(KeldReportJson, HoldsTheLog)
{
    import("lists");
    EXPECT_EQ("[(1, 'text', 'plain', True), (1, 'indented', 'set in', True), "
              "(2, 'warning', 'in two', True), (3, 'text', 'in three', False), "
              "(6, 'text', 'in six', True)]",
              says("[tuple(l.values()) for l in d['log']]"));
}

TEST_F(KeldReportJson, HoldsTheTreeWithLevels)
{
    import("product");
    EXPECT_EQ("[(0, 1, 'assembly', 'Pump', None), (1, 2, 'part', 'Housing', None), "
              "(1, 3, 'assembly', 'Rotor', None), (2, 4, 'part', 'Blade', None), "
              "(2, 5, 'instance', 'Blade', 4), (1, 6, 'instance', 'Rotor', 3)]",
              says("[tuple(n.values()) for n in d['tree']]"));
    EXPECT_EQ("True", says("d['lostNothing']"));
}

TEST_F(KeldReportJson, KeepsEveryNodeOfADeepAndAWideTree)
{
    import("deep");
    EXPECT_EQ("5001 5000", says("str(len(d['tree'])) + ' ' + str(d['tree'][-1]['level'])"));
    import("wide");
    EXPECT_EQ("12001", says("len(d['tree'])"));
}

TEST_F(KeldReportJson, IsWrittenForRunsThatFail)
{
    EXPECT_EQ(1, import("fail-2").code);
    EXPECT_EQ("[1, 'failed', 2]", says("list(d['status'].values())[:3]"));
    EXPECT_EQ(6, import("fail-9").code);
    EXPECT_EQ("[2, 'cancelled', 9]", says("list(d['status'].values())[:3]"));
    EXPECT_EQ(4, import("crash").code);
    EXPECT_EQ("[1, 'failed', 8, '', "
              "'the translator ended without an answer, killed by signal 11 (Segmentation fault); "
              "nothing came of the run.']",
              says("list(d['status'].values())"));
}

TEST_F(KeldReportJson, KeepsTextsWholeAndReplacesBrokenOnes)
{
    import("markup");
    EXPECT_EQ("True", says("d['entries'][0]['text'].endswith('</style></bdi></title>')"));
    EXPECT_EQ("True", says("d['entries'][1]['text'] == 'entry \\x02 \\ufffd'"));
    EXPECT_EQ("True", says("d['tree'][1]['name'] == 'control \\x01\\x1b[31m\\x7f\\x9b end'"));
    EXPECT_EQ("True", says("'\\ufffd' in d['tree'][2]['name']"));
    import("long");
    EXPECT_EQ("1048576", says("len(d['entries'][0]['text'])"));
}

TEST_F(KeldReportJson, OtherFormatsAreAWrongCommandLine)
{
    Ended const ended =
        m_Keld.run({"import", "--report", "r", "--report-format", "pdf", "product.kit"});
    EXPECT_EQ(2, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("pdf"));
}

} // namespace
