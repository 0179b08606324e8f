#include "process/keld_program.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

class KeldProductTree : public testing::Test
{
protected:
    KeldProductTree() { m_Keld.install("kit", KELD_TEST_KIT_TRANSLATOR); }

    std::string print(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"import", "-q"});
        Ended const ended = m_Keld.run(arguments);
        EXPECT_EQ(0, ended.code) << ended.err;
        return ended.out;
    }

    LeftoverGuard const m_Guard;
    KeldProgram m_Keld;
};

TEST_F(KeldProductTree, IsPrintedWithInstancesMarkedAndUnits)
{
    EXPECT_EQ("product.kit: Completed! (exit status 8)\n"
              "  points              1\n"
              "  vertices            1\n"
              "  product structure   6\n"
              "  annotations         1\n"
              "  from                1 2 3\n"
              "  to                  1 2 3\n"
              "  product tree\n"
              "    Pump (assembly, millimetres)\n"
              "      Housing (part, inches x 2)\n"
              "      Rotor (assembly, millimetres)\n"
              "        Blade (part, length type 99)\n"
              "        Blade (instance of part)\n"
              "      Rotor (instance of assembly)\n",
              print({"product.kit"}));
}

TEST_F(KeldProductTree, IsPrintedWithTransformsOnRequest)
{
    EXPECT_THAT(print({"--transforms", "product.kit"}),
                EndsWith("        Blade (part, length type 99)\n"
                         "            transform identity\n"
                         "        Blade (instance of part)\n"
                         "            transform 1 0 0 0  0 1 0 0  0 0 1 0  10 0.1 -2.5 1\n"
                         "      Rotor (instance of assembly)\n"
                         "          transform 1 0 0 0  0 1 0 0  0 0 1 0  0 0 40 1\n"));
    EXPECT_THAT(print({"--transforms", "numbers.kit"}),
                EndsWith("transform nan inf -inf -0  0.1 0.3333333333333333 5e-324 "
                         "1.7976931348623157e+308  0 0 0 0  0 0 0 0\n"));
}

TEST_F(KeldProductTree, IsNotPrintedOfAModelWithout)
{
    EXPECT_THAT(print({"succeed.kit"}), Not(HasSubstr("tree")));
}

TEST_F(KeldProductTree, OfSeveralTopsShowsThemSideBySide)
{
    EXPECT_THAT(print({"parts.kit"}), EndsWith("  product tree\n"
                                               "    first (part, millimetres)\n"
                                               "    second (part, millimetres)\n"));
}

TEST_F(KeldProductTree, EndsAfterFortyNodesAndSaysHowManyMoreThereAre)
{
    std::string const out = print({"wide.kit"});
    EXPECT_THAT(out, EndsWith("      part 38 (part, millimetres)\n"
                              "    and 11961 more; --whole-tree shows all\n"));
}

TEST_F(KeldProductTree, IsAsLongAsAskedFor)
{
    EXPECT_THAT(print({"--tree", "2", "product.kit"}),
                EndsWith("      Housing (part, inches x 2)\n"
                         "    and 4 more; --whole-tree shows all\n"));
    EXPECT_THAT(print({"--tree", "6", "product.kit"}), Not(HasSubstr("more")));
    EXPECT_THAT(print({"--whole-tree", "wide.kit"}),
                EndsWith("      part 11999 (part, millimetres)\n"));
}

TEST_F(KeldProductTree, ShowsADeepOneOnASmallStackByTheNumbersOfItsLevels)
{
    m_Keld.before([] {
        rlimit const small = {512 * 1024, 512 * 1024};
        if (setrlimit(RLIMIT_STACK, &small) != 0)
            _exit(77);
    });
    std::string const out = print({"--whole-tree", "deep.kit"});
    std::string const indent(4 + 2 * 24, ' ');
    EXPECT_THAT(out, HasSubstr("\n" + indent + "level@24 (assembly, millimetres)\n" + indent +
                               "[level 25] level@25 (assembly, millimetres)\n"));
    EXPECT_THAT(out, EndsWith("\n" + indent + "[level 5000] bottom (part, millimetres)\n"));
}

TEST_F(KeldProductTree, ShowsControlCharactersOfNamesAsNumbers)
{
    std::string const out = print({"markup.kit"});
    EXPECT_THAT(out, HasSubstr("      control \\x01\\x1b[31m\\x7f\\xc2\\x9b end (part, "));
    EXPECT_THAT(out, HasSubstr("      two\\x0alines (part, "));
    EXPECT_THAT(out, HasSubstr("      kept \xc3\xa4 \xe2\x82\xac \xf0\x9f\x94\xa7 name (part, "));
}

} // namespace
