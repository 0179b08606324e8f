#include "process/keld_program.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

TEST(KeldImport, PrintsWhatArrived)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("three.xyz", "1 2 3\n-4 5.5 6e3\n0 0 0\n");

    Ended const ended = keld.run({"import", "-q", "three.xyz"});

    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("three.xyz: Completed! (exit status 8)\n"
              "  points              3\n"
              "  from                -4 0 0\n"
              "  to                  1 5.5 6000\n",
              ended.out);
    EXPECT_THAT(ended.err, IsEmpty());
}

TEST(KeldImport, PrintsAsManyPointsAsAskedFor)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("three.xyz", "1 2 3\n-0.0 0.1 1e-300\n7 8 9\n");

    Ended const ended = keld.run({"import", "-q", "--points", "2", "three.xyz"});

    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("1: 1 2 3\n2: -0 0.1 1e-300\n"));
    EXPECT_THAT(ended.out, Not(HasSubstr("3: ")));
}

TEST(KeldImport, ListsAllPointsInTheOrderOfTheirIds)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("three.xyz", "9 0 0\n8 0 0\n7 0 0\n");

    Ended const ended = keld.run({"import", "-q", "--list-points", "three.xyz"});

    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("1: 9 0 0\n2: 8 0 0\n3: 7 0 0\n"));
}

TEST(KeldImport, TakesFileNamesWithBlanksPercentSignsAndLetters)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::string const name = " a b%s%%n 'q' \"z\" \xc3\xa4.xyz";
    keld.file(name, "1 2 3\n");

    Ended const ended = keld.run({"import", "-q", name});

    EXPECT_EQ(0, ended.code) << ended.err;
    EXPECT_THAT(ended.out, HasSubstr(name + ": Completed!"));
}

TEST(KeldImport, FindsTheTranslatorForASuffixInCapitals)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("one.XYZ", "1 2 3\n");

    EXPECT_EQ(0, keld.run({"import", "-q", "one.XYZ"}).code);
}

TEST(KeldImport, TakesTheTranslatorThatIsNamed)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("one.txt", "1 2 3\n");

    EXPECT_EQ(0, keld.run({"import", "-q", "--translator", "xyz", "one.txt"}).code);
}

TEST(KeldImport, PrintsTheLogThatCameWithTheModel)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    Ended const ended = keld.run({"import", "-q", "succeed.kit"});

    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("a message\n    Warning : a warning\n    Error : an error\n", ended.err);
}

TEST(KeldImport, HandsTypedOptionsToTheTranslator)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted",
                         "options;expect-option a=1;expect-option b=0.5;"
                         "expect-option c=true;expect-option d=x<y & \"z\";"
                         "expect-option e=;"
                         "read;frame 123;read;model 1;frame 120 i64 size;read;frame 126;"
                         "read;frame 126");

    Ended const ended = keld.run({"import", "-q", "-o", "a=1", "-o", "b=0.5", "-o", "c=true", "-o",
                                  "d=x<y & \"z\"", "--option", "e=", "f.scripted"});

    EXPECT_EQ(0, ended.code) << ended.err;
}

TEST(KeldImport, SaysSoWhenTheModelIsEmpty)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "options;read;frame 123;read;frame 120 i64 0;read;expect x u;"
                                     "frame 126;read;expect q;frame 126");

    Ended const ended = keld.run({"import", "-q", "f.scripted"});

    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("The model is empty."));
}

TEST(KeldImport, RunsWhateverTheTranslatorPrints)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "print hello;options;read;frame 123;print 120;read;model 2;"
                                     "frame 120 i64 size;read;frame 126;print ~;read;frame 126");

    Ended const ended = keld.run({"import", "-q", "f.scripted"});

    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("points              2"));
}

TEST(KeldImport, StandsInForAProductTranslator)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("jt", "options;read;expect f part.jt;frame 123;read;model 4;"
                               "frame 120 i64 size;read;frame 126;read;frame 126");
    keld.file("JtTk107.dll", "");
    keld.set("JT_OPEN_PATH", keld.files().path());

    Ended const ended = keld.run({"import", "-q", "part.jt"});

    EXPECT_EQ(0, ended.code) << ended.err;
    EXPECT_THAT(ended.out, HasSubstr("points              4"));
}

} // namespace
