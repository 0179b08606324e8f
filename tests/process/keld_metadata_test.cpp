#include "process/keld_program.h"
#include "process/other_programs.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::pythonSays;

constexpr char EmptyTable[] = "  assemblies                    0\n"
                              "  parts                         0\n"
                              "  instances                     0\n"
                              "  faces                         0\n"
                              "  triangles                     0\n"
                              "  spot welds                    0\n"
                              "  annotations                   0\n";

class KeldMetadata : public testing::Test
{
protected:
    KeldMetadata() { m_Keld.install("kit", KELD_TEST_KIT_TRANSLATOR); }

    Ended metadata(std::string const & name)
    {
        return m_Keld.run({"info", "-q", "--metadata", name + ".kit"});
    }

    /// What python3 makes of the JSON that a run of `keld info` prints.
    std::string says(std::vector<std::string> const & arguments, std::string const & expression)
    {
        std::vector<std::string> words = {"info", "-q", "--json"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        m_Ended = m_Keld.run(words);
        return pythonSays(m_Keld.file("info.json", m_Ended.out), expression);
    }

    LeftoverGuard const m_Guard;
    KeldProgram m_Keld;
    Ended m_Ended;
};

// What travels

TEST_F(KeldMetadata, TravelsAsOneAttributeAndOneEmptyPart)
{
    EXPECT_EQ("{'products': 1, 'attributes': 1}",
              says({"-o", "METADATA_ONLY=true", "product.kit"},
                   "{k: n for k, n in d['counts'].items() if n != 0}"));
    EXPECT_EQ(0, m_Ended.code);
    EXPECT_EQ("[('part', 'empty_part')]", says({"-o", "METADATA_ONLY=true", "product.kit"},
                                               "[(p['type'], p['name']) for p in d['products']]"));
    EXPECT_EQ("14  []", says({"-o", "METADATA_ONLY=true", "product.kit"},
                             "*(d['attributes'][0][k] for k in ('type', 'name', 'entities'))"));
}

TEST_F(KeldMetadata, TravelsAsTheValuesOfADictionary)
{
    // Ten counters, no feature, no text.
    EXPECT_EQ("20 0 ", says({"-o", "METADATA_ONLY=true", "product.kit"},
                            "*(d['attributes'][0]['values'][i]['value'] for i in (0, 21, 22))"));
    EXPECT_EQ("23", says({"-o", "METADATA_ONLY=true", "product.kit"},
                         "len(d['attributes'][0]['values'])"));
}

TEST_F(KeldMetadata, IsHandedOverOnlyWhereTheOptionIsTrue)
{
    for (char const * option : {"METADATA_ONLY=false", "METADATA_ONLY=1", "METADATA_ONLY=yes"})
        EXPECT_EQ("6", says({"-o", option, "product.kit"}, "d['counts']['products']")) << option;
}

TEST_F(KeldMetadata, TakesTheGeometryOfAFailedRunAway)
{
    EXPECT_EQ("{'products': 1, 'attributes': 1}",
              says({"-o", "METADATA_ONLY=true", "fail-0.kit"},
                   "{k: n for k, n in d['counts'].items() if n != 0}"));
    EXPECT_EQ(1, m_Ended.code);
    EXPECT_EQ("['a warning', 'as the name says']",
              says({"-o", "METADATA_ONLY=true", "fail-0.kit"}, "[l['text'] for l in d['log']]"));
}

// What is printed

TEST_F(KeldMetadata, OfAProductStructure)
{
    Ended const ended = metadata("product");
    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("product.kit: Completed! (exit status 8)\n"
              "  assemblies                    2\n"
              "  parts                         2\n"
              "  instances                     2\n"
              "  instances of assemblies       1\n"
              "  instances of parts            1\n"
              "  faces                         0\n"
              "  triangles                     0\n"
              "  spot welds                    0\n"
              "  annotations                   1\n"
              "  general attributes            2\n",
              ended.out);
    EXPECT_EQ("", ended.err);
}

TEST_F(KeldMetadata, OfGeometry)
{
    Ended const ended = metadata("geometry");
    EXPECT_THAT(ended.out, HasSubstr("  lines                         1\n"
                                     "  circles                       2\n"
                                     "  ellipses                      3\n"
                                     "  B-spline curves               4\n"
                                     "  line strips                   5\n"
                                     "  composite curves              6\n"));
    EXPECT_THAT(ended.out, HasSubstr("  planes                        1\n"));
    EXPECT_THAT(ended.out, Not(HasSubstr("without geometry")));
}

TEST_F(KeldMetadata, WithTheNamesThatTheTranslatorTells)
{
    Ended const ended = metadata("names");
    EXPECT_EQ("names.kit: Completed! (exit status 8)\n" + std::string(EmptyTable) +
                  "  hole features                 1\n"
                  "  blend features                1\n"
                  "  key 1234                      5\n"
                  "  features\n"
                  "    Pocket 0                    1\n"
                  "    bell\\x07                    2\n"
                  "  text                          steel,tab\\x09,\n",
              ended.out);
    EXPECT_EQ("metadata alone\n", ended.err);
}

TEST_F(KeldMetadata, IsNotAskedForByOtherRuns)
{
    EXPECT_EQ("the whole model\n", m_Keld.run({"import", "-q", "names.kit"}).err);
}

TEST_F(KeldMetadata, ComesWithTheWholeLog)
{
    Ended const ended = metadata("succeed");
    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("a message\n    Warning : a warning\n    Error : an error\n", ended.err);
}

TEST_F(KeldMetadata, OfAFailedRunIsNotPrinted)
{
    Ended const ended = metadata("fail-0");
    EXPECT_EQ(1, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ("    Warning : a warning\n    Error : as the name says\n"
              "keld: fail-0.kit: Failed! (exit status 0)\n",
              ended.err);
}

TEST_F(KeldMetadata, AsJson)
{
    EXPECT_EQ("format version file status counters features text log",
              says({"--metadata", "names.kit"}, "' '.join(d)"));
    EXPECT_EQ("keld metadata 1 names.kit completed",
              says({"--metadata", "names.kit"},
                   "d['format'], d['version'], d['file'], d['status']['name']"));
    EXPECT_EQ("{'assemblies': 0, 'parts': 0, 'instances': 0, 'faces': 0, 'triangles': 0, "
              "'spot welds': 0, 'annotations': 0, 'hole features': 1, 'blend features': 1, "
              "'key 1234': 5}",
              says({"--metadata", "names.kit"}, "d['counters']"));
    EXPECT_EQ("[{'name': 'Pocket 0', 'count': 1}, {'name': 'bell\\x07', 'count': 2}]",
              says({"--metadata", "names.kit"}, "d['features']"));
    EXPECT_EQ("steel,tab\t,", says({"--metadata", "names.kit"}, "d['text']"));
}

TEST_F(KeldMetadata, AsJsonOfAFailedRunTellsTheFailure)
{
    EXPECT_EQ("failed", says({"--metadata", "fail-0.kit"}, "d['status']['name']"));
    EXPECT_EQ(1, m_Ended.code);
    EXPECT_THAT(m_Ended.err, HasSubstr("keld: fail-0.kit: Failed! (exit status 0)\n"));
}

TEST(KeldMetadataOfFormats, PointFilesAndTriangleFiles)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "1 2 3\n");
    keld.file("f.stl", "solid\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
                       "vertex 0 1 0\nendloop\nendfacet\nendsolid\n");

    EXPECT_EQ("f.xyz: Completed! (exit status 8)\n" + std::string(EmptyTable),
              keld.run({"info", "-q", "--metadata", "f.xyz"}).out);
    EXPECT_THAT(keld.run({"info", "-q", "--metadata", "f.stl"}).out,
                HasSubstr("  triangles                     1\n"));
}

// Metadata that is none

Ended answerToAttribute(std::string const & attribute)
{
    KeldProgram keld;
    keld.installScripted(
        "scripted", "options;expect-option METADATA_ONLY=true;read;frame 123;read;" + attribute +
                        ";model 1;frame 120 i64 size;read;frame 126;read;"
                        "frame 126");
    return keld.run({"info", "-q", "--metadata", "--database", "a.db", "f.scripted"});
}

TEST(KeldMetadataFailures, ATranslatorThatKnowsNoMetadata)
{
    LeftoverGuard const guard;
    Ended const ended = answerToAttribute("attribute 13 i 0 i 0 t -");
    EXPECT_EQ(5, ended.code);
    EXPECT_EQ("keld: f.scripted: the translator handed over no metadata.\n", ended.err);
}

TEST(KeldMetadataFailures, ASoundDictionaryIsTaken)
{
    LeftoverGuard const guard;
    Ended const ended = answerToAttribute("attribute 14 i 2 i 70 i 5 i 2 t Hole i 3 t words");
    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("f.scripted: Completed! (exit status 8)\n"
              "  faces                         5\n"
              "  features\n"
              "    Hole                        3\n"
              "  text                          words\n",
              ended.out);
}

class KeldMetadataLayout : public testing::TestWithParam<char const *>
{};

TEST_P(KeldMetadataLayout, ThatIsNoneIsRefused)
{
    LeftoverGuard const guard;
    Ended const ended = answerToAttribute(std::string("attribute 14") + GetParam());
    EXPECT_EQ(5, ended.code);
    EXPECT_EQ("keld: f.scripted: what the translator handed over as metadata does not have the "
              "layout of metadata.\n",
              ended.err);
    EXPECT_THAT(ended.out, Not(HasSubstr("faces")));
}

INSTANTIATE_TEST_SUITE_P(Truncated, KeldMetadataLayout,
                         testing::Values("", " i 2", " i 2 i 70", " i 2 i 70 i 5",
                                         " i 2 i 70 i 5 i 2", " i 2 i 70 i 5 i 2 t Hole",
                                         " i 2 i 70 i 5 i 2 t Hole i 3"));

INSTANTIATE_TEST_SUITE_P(
    WrongTypes, KeldMetadataLayout,
    testing::Values(" t 2 i 70 i 5 i 2 t Hole i 3 t words", " i 2 t 70 i 5 i 2 t Hole i 3 t words",
                    " i 2 i 70 t 5 i 2 t Hole i 3 t words", " i 2 i 70 i 5 t 2 t Hole i 3 t words",
                    " i 2 i 70 i 5 i 2 i 7 i 3 t words", " i 2 i 70 i 5 i 2 t Hole t 3 t words",
                    " i 2 i 70 i 5 i 2 t Hole i 3 i 7"));

INSTANTIATE_TEST_SUITE_P(WrongCounts, KeldMetadataLayout,
                         testing::Values(" i 2147483646 i 70 i 5 i 0 t words",
                                         " i -2 i 70 i 5 i 0 t words", " i 1 i 70 i 0 t words",
                                         " i 0 i 0 t words i 1"));

} // namespace
