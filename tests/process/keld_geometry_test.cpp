#include "process/keld_program.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

TEST(KeldGeometry, CountsTheKindsOfCurvesAndSurfaces)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    Ended const ended = keld.run({"import", "-q", "geometry.kit"});

    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("geometry.kit: Completed! (exit status 8)\n"
              "  3D curves           21\n"
              "    lines                         1\n"
              "    circles                       2\n"
              "    ellipses                      3\n"
              "    B-spline curves               4\n"
              "    line strips                   5\n"
              "    composite curves              6\n"
              "  UV curves           2\n"
              "  surfaces            66\n"
              "    planes                        1\n"
              "    cylinders                     2\n"
              "    cones                         3\n"
              "    spheres                       4\n"
              "    tori                          5\n"
              "    B-spline surfaces             6\n"
              "    surfaces of revolution        7\n"
              "    surfaces of linear extrusion  8\n"
              "    ruled surfaces                9\n"
              "    offset surfaces               10\n"
              "    without geometry              11\n"
              "  spot welds          4\n"
              "  coordinate systems  3\n",
              ended.out);
    EXPECT_THAT(ended.err, IsEmpty());
}

TEST(KeldGeometry, PassesOverKindsThatAreNotThere)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    Ended const ended = keld.run({"import", "-q", "succeed.kit"});

    EXPECT_THAT(ended.out, HasSubstr("  points              3\n  from "));
    EXPECT_THAT(ended.out, Not(HasSubstr("curves")));
}

TEST(KeldLog, PrintsControlCharactersOfATranslatorAsNumbers)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    Ended const ended = keld.run({"import", "-q", "controls.kit"});

    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("\\x1b[2J\\x07 \\x01\\x1f\\x7f\\x0d\\x09\n"
              "    Warning : two\\x0alines\n"
              "C1 \\xc2\\x80\\xc2\\x9b31m\\xc2\\x9f\n",
              ended.err);
}

TEST(KeldLog, PrintsAllOtherBytesOfATranslatorAsTheyAre)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    Ended const ended = keld.run({"import", "-q", "letters.kit"});

    EXPECT_EQ(0, ended.code);
    EXPECT_EQ(" ~\\ \xc2\xa0 \xc3\xa4 \xe2\x82\xac \xff\xc0\xc2 \xc2\n", ended.err);
}

} // namespace
