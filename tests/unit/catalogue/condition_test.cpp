#include "catalogue/condition.h"

#include <keld-transl/metadata/database_type.h>

#include <gtest/gtest.h>
#include <string>

namespace {

using keld::Comparison;
using keld::parseCondition;

void expectCondition(std::string const & text, int counter, Comparison comparison, long long number)
{
    auto const condition = parseCondition(text);
    ASSERT_TRUE(condition) << text;
    EXPECT_EQ(counter, condition->counter) << text;
    EXPECT_EQ(comparison, condition->comparison) << text;
    EXPECT_EQ(number, condition->number) << text;
}

TEST(Condition, IsANameASignAndANumber)
{
    expectCondition("faces>1000", transl_tk::Faces, Comparison::Greater, 1000);
    expectCondition("faces>=1000", transl_tk::Faces, Comparison::GreaterOrEqual, 1000);
    expectCondition("faces<1000", transl_tk::Faces, Comparison::Less, 1000);
    expectCondition("faces<=1000", transl_tk::Faces, Comparison::LessOrEqual, 1000);
    expectCondition("faces=0", transl_tk::Faces, Comparison::Equal, 0);
    expectCondition("faces!=-1", transl_tk::Faces, Comparison::NotEqual, -1);
    expectCondition("  spot welds  <  5000000000 ", transl_tk::SpotWelds, Comparison::Less,
                    5000000000);
    expectCondition("key -12>3", -12, Comparison::Greater, 3);
}

TEST(Condition, IsNothingElse)
{
    for (char const * text : {"", "faces", ">", "faces>", ">1", "faces>a", "faces>1a", "faces>1.5",
                              "faces>+1", "faces>>1", "faces==1", "faces!1", "wings>1", " >1",
                              "faces>9223372036854775808", "faces>1;", "key>1", "key x>1"})
        EXPECT_FALSE(parseCondition(text)) << text;
}

} // namespace
