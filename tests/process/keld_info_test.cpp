#include "process/keld_program.h"
#include "process/other_programs.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::pythonSays;

class KeldInfo : public testing::Test
{
protected:
    KeldInfo() { m_Keld.install("kit", KELD_TEST_KIT_TRANSLATOR); }

    /// Runs `keld info --json` and keeps what it prints.
    Ended info(std::string const & name)
    {
        Ended const ended = m_Keld.run({"info", "-q", "--json", name + ".kit"});
        m_Path = m_Keld.file("info.json", ended.out);
        return ended;
    }

    std::string says(std::string const & expression) const
    {
        return pythonSays(m_Path, expression);
    }

    LeftoverGuard const m_Guard;
    KeldProgram m_Keld;
    std::string m_Path;
};

TEST_F(KeldInfo, PrintsTheSameAsAnImport)
{
    Ended const import = m_Keld.run({"import", "-q", "product.kit"});
    Ended const info = m_Keld.run({"info", "-q", "product.kit"});
    EXPECT_EQ(0, info.code);
    EXPECT_EQ(import.out, info.out);
    EXPECT_THAT(info.out, HasSubstr("Blade (instance of part)"));
}

TEST_F(KeldInfo, ListsNoPoints)
{
    EXPECT_EQ(2, m_Keld.run({"info", "--list-points", "succeed.kit"}).code);
}

TEST_F(KeldInfo, AsJsonHasTheseKeysInThisOrder)
{
    EXPECT_EQ(0, info("product").code);
    EXPECT_EQ("format version file status counts curveKinds surfaceKinds box products "
              "parameterTrees attributes annotations textList facesToSplit entries log",
              says("' '.join(d)"));
    EXPECT_EQ("keld model 1", says("d['format'], d['version']"));
    EXPECT_EQ("product.kit [0, 'completed', 8, 'Completed!', '']",
              says("d['file'], list(d['status'].values())"));
}

TEST_F(KeldInfo, AsJsonCountsEveryKind)
{
    info("product");
    EXPECT_EQ("{'points': 1, 'curves': 0, 'uvCurves': 0, 'surfaces': 0, 'vertices': 1, 'edges': 0, "
              "'fins': 0, 'loops': 0, 'faces': 0, 'shells': 0, 'bodies': 0, 'products': 6, "
              "'triStrips': 0, 'spotWelds': 0, 'cartesianCoords': 0, 'annotations': 1, "
              "'attributes': 2}",
              says("d['counts']"));
    EXPECT_EQ("{'low': [1.0, 2.0, 3.0], 'high': [1.0, 2.0, 3.0]}", says("d['box']"));
    info("geometry");
    EXPECT_EQ("{'lines': 1, 'circles': 2, 'ellipses': 3, 'B-spline curves': 4, 'line strips': 5, "
              "'composite curves': 6}",
              says("d['curveKinds']"));
    EXPECT_EQ("11", says("d['surfaceKinds']['without geometry']"));
    EXPECT_EQ("None", says("d['box']"));
}

TEST_F(KeldInfo, AsJsonHoldsTheProductStructure)
{
    info("product");
    EXPECT_EQ("[(1, 'assembly', 'Pump', 0, None), (2, 'part', 'Housing', 1, 1), "
              "(3, 'assembly', 'Rotor', 1, 1), (4, 'part', 'Blade', 2, 3), "
              "(5, 'instance', 'Blade', 2, 3), (6, 'instance', 'Rotor', 1, 1)]",
              says("[tuple(p.values())[:5] for p in d['products']]"));
    EXPECT_EQ("{5: 4, 6: 3}",
              says("{p['id']: p['component'] for p in d['products'] if 'component' in p}"));
    EXPECT_EQ("[1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 10.0, 0.1, -2.5, 1.0]",
              says("d['products'][4]['transform']"));
    EXPECT_EQ("first second label",
              says("d['products'][1]['firstLabel'], d['products'][1]['secondLabel'], "
                   "d['products'][1]['partLabel']"));
    EXPECT_EQ("3 2.0 78.7401574", says("*(d['products'][1]['units'][k] for k in ('lengthType', "
                                       "'lengthScale', 'unitsPerMetre'))"));
    EXPECT_EQ("[1] [1] []", says("*(d['products'][1]['contents'][k] for k in ('points', "
                                 "'annotations', 'bodies'))"));
}

TEST_F(KeldInfo, AsJsonHoldsParameterTrees)
{
    info("product");
    EXPECT_EQ("1 2 [10]", says("len(d['parameterTrees']), d['parameterTrees'][0]['part'], "
                               "d['parameterTrees'][0]['top']"));
    EXPECT_EQ("[{'id': 10, 'type': 'branch', 'tag': 3, 'name': 'Features', 'children': [11, 12], "
              "'properties': [], 'entities': []}, {'id': 11, 'type': 'branch', 'tag': 7, 'name': "
              "'Holes', 'children': [12], 'properties': [], 'entities': []}, {'id': 12, 'type': "
              "'leaf', 'parameters': [{'parameter': 31, 'values': [{'type': 'double', 'value': "
              "1.5}, {'type': 'double', 'value': -0.25}, {'type': 'double', 'value': 1e+300}]}], "
              "'properties': [{'name': 'count', 'type': 'int', 'value': 6}, {'name': 'shape', "
              "'type': 'text', 'value': 'round'}], 'entities': [{'kind': 7, 'id': 2}]}]",
              says("d['parameterTrees'][0]['nodes']"));
}

TEST_F(KeldInfo, AsJsonHoldsAttributesAndAnnotations)
{
    info("product");
    EXPECT_EQ("{'name': 'colour', 'type': 1, 'values': [{'type': 'byte', 'value': 200}, {'type': "
              "'byte', 'value': 100}, {'type': 'byte', 'value': 50}], 'entities': [{'kind': 7, "
              "'id': 2}]}",
              says("d['attributes'][0]"));
    EXPECT_EQ("[('text', 'steel'), ('int', -7), ('bool', True), ('double', 0.1)]",
              says("[tuple(v.values()) for v in d['attributes'][1]['values']]"));
    EXPECT_EQ("[1, 2]", says("sorted(e['id'] for e in d['attributes'][1]['entities'])"));
    EXPECT_EQ("[{'id': 1, 'triples': [[1.0, 2.0, 3.0], [4.0, 5.0, 6.0], [7.0, 8.0, 9.0], [0.5, "
              "0.25, 0.125]], 'points': [[10.0, 11.0, 12.0], [13.0, 14.0, 15.0]], 'integers': "
              "[[1, 0, 0], [0, 2, 0], [0, 0, 3], [4, 4, 4]], 'numbers': [21, 22, 23, 24, 25], "
              "'texts': ['0.05 A', 'note']}]",
              says("d['annotations']"));
}

TEST_F(KeldInfo, AsJsonHoldsEntriesAndLog)
{
    info("lost");
    EXPECT_EQ("7 (13, 'Edge', 1, 'warning', 'Edge 4 is short.')",
              says("len(d['entries']), tuple(d['entries'][2].values())"));
    info("lists");
    EXPECT_EQ("[(1, 'text', 'plain', True), (1, 'indented', 'set in', True), "
              "(2, 'warning', 'in two', True), (3, 'text', 'in three', False), "
              "(6, 'text', 'in six', True)]",
              says("[tuple(l.values()) for l in d['log']]"));
}

TEST_F(KeldInfo, AsJsonKeepsEveryDigitAndTellsNumbersThatAreNone)
{
    info("numbers");
    EXPECT_EQ("['nan', 'inf', '-inf', -0.0, 0.1, 0.3333333333333333, 5e-324, "
              "1.7976931348623157e+308, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0]",
              says("d['products'][0]['transform']"));
    EXPECT_EQ("[('double', 'nan'), ('double', 123456789.12345679), ('int', -2147483648), "
              "(None, None), ('text', 'broken \xEF\xBF\xBD')]",
              says("[tuple(v.values()) for v in d['attributes'][0]['values']]"));
}

TEST_F(KeldInfo, AsJsonOfADeepTreeIsFlatOnASmallStack)
{
    m_Keld.before([] {
        rlimit const small = {512 * 1024, 512 * 1024};
        if (setrlimit(RLIMIT_STACK, &small) != 0)
            _exit(77);
    });
    EXPECT_EQ(0, info("deep").code);
    EXPECT_EQ("5001 5000 5000", says("len(d['products']), d['products'][-1]['level'], "
                                     "d['products'][-1]['parent']"));
}

TEST_F(KeldInfo, AsJsonIsPrintedForRunsThatFail)
{
    Ended const ended = info("fail-2");
    EXPECT_EQ(1, ended.code);
    EXPECT_EQ("[1, 'failed', 2, 'Failed! Unsupported file type', '']",
              says("list(d['status'].values())"));
    EXPECT_EQ("3", says("d['counts']['points']"));
    EXPECT_EQ(4, info("crash").code);
    EXPECT_EQ("failed", says("d['status']['name']"));
}

TEST_F(KeldInfo, AsJsonIsAllThatStandsOnStandardOutput)
{
    Ended const ended = m_Keld.run({"info", "--json", "--report", "r", "succeed.kit"});
    EXPECT_EQ('{', ended.out.front());
    EXPECT_EQ("}\n", ended.out.substr(ended.out.size() - 2));
    EXPECT_THAT(ended.out, Not(HasSubstr("exit status 8)")));
    EXPECT_THAT(tests::contentOf(m_Keld.files() / "r/report.html"), HasSubstr("succeed.kit"));
}

TEST_F(KeldInfo, AsJsonStandsAloneWhenTheToolkitHasSomethingToSay)
{
    m_Keld.installScripted("scripted", "options;read;frame 123;read;frame 120 i64 99;read;exit 0");
    Ended const json = m_Keld.run({"info", "-q", "--json", "f.scripted"});
    EXPECT_EQ(5, json.code);
    EXPECT_THAT(json.err, HasSubstr("    Error : "));
    EXPECT_EQ('{', json.out.front());
    m_Path = m_Keld.file("info.json", json.out);
    EXPECT_EQ("failed", says("d['status']['name']"));
}

TEST_F(KeldInfo, AsJsonShowsNoAssemblyThatIsNotInTheModel)
{
    Ended const ended = m_Keld.run({"info", "-q", "--json", "--report", "r", "parts.kit"});
    m_Path = m_Keld.file("info.json", ended.out);
    EXPECT_EQ("[('part', None), ('part', None)] 2",
              says("[(p['type'], p['parent']) for p in d['products']], d['counts']['products']"));
}

} // namespace
