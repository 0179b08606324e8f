#include "support/foreign_value.h"
#include "support/models.h"
#include "unit/metadata/attribute_contents.h"

#include <keld-transl/metadata/comment_attributes.h>
#include <keld-transl/model/point3d.h>

#include <gtest/gtest.h>
#include <locale>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

namespace transl_tk {
namespace {

class CommentAttributesTest : public testing::Test
{
protected:
    /// An attribute on `m_Point`.
    Attribute * attribute(char const * name, tests::Contents const & contents, int type = 7)
    {
        Attribute * const made = tests::anAttribute(name, type, contents);
        made->addEntity(m_Point);
        return made;
    }

    std::string commentOf(Attribute * attribute)
    {
        CommentAttributes comments;
        CommentAttributes::setComment(attribute, &comments);
        return comments.getComment(m_Point);
    }

    tests::ScopedPool m_Pool;
    Point3D * m_Point = Point3D::create(0, 1, 2, 3);
    CommentAttributes m_Comments;
};

TEST_F(CommentAttributesTest, RepeatTheNameBeforeEachValue)
{
    EXPECT_EQ(commentOf(attribute("Note", {"a", 2})), "Note a, Note 2\n");
}

TEST_F(CommentAttributesTest, WriteEveryTypeOfValue)
{
    EXPECT_EQ(commentOf(attribute("t", {"a b"})), "t a b\n");
    EXPECT_EQ(commentOf(attribute("t", {-12})), "t -12\n");
    EXPECT_EQ(commentOf(attribute("t", {true, false})), "t 1, t 0\n");
    EXPECT_EQ(commentOf(attribute("t", {1.5F, 0.1F})), "t 1.5, t 0.1\n");
    EXPECT_EQ(commentOf(attribute("t", {1.5, 1234567.0, 1.0 / 3})),
              "t 1.5, t 1.23457e+06, t 0.333333\n");
    EXPECT_EQ(commentOf(attribute(
                  "t", {static_cast<unsigned char>(65), static_cast<unsigned char>(200)})),
              "t 65, t 200\n");
}

TEST_F(CommentAttributesTest, WriteNothingForNullAndForTypesThatDoNotExist)
{
    Attribute * const odd = attribute("t", {std::monostate()});
    odd->addValue(new tests::ForeignValue(0));
    odd->addValue(new tests::ForeignValue(7));
    EXPECT_EQ(commentOf(odd), "t , t , t \n");
}

TEST_F(CommentAttributesTest, WriteNumbersInTheSameWayInEveryLocale)
{
    struct Punctuation : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale const before = std::locale::global(std::locale(std::locale(), new Punctuation));
    std::string const comment = commentOf(attribute("t", {1.5, 12345}));
    std::locale::global(before);
    EXPECT_EQ(comment, "t 1.5, t 12345\n");
}

TEST_F(CommentAttributesTest, AreMadeOfType7Only)
{
    for (int type : {-1, 0, 2, 6, 8, 14})
        EXPECT_EQ(commentOf(attribute("Note", {"a"}, type)), "") << type;
}

TEST_F(CommentAttributesTest, AreNotMadeOfAnAttributeWithoutValues)
{
    CommentAttributes::setComment(attribute("Note", {}), &m_Comments);
    EXPECT_EQ(m_Comments.getComment(m_Point), "");
    CommentAttributes::setComment(attribute("Note", {1}), &m_Comments);
    CommentAttributes::setComment(attribute("Note", {}), &m_Comments);
    EXPECT_EQ(m_Comments.getComment(m_Point), "Note 1\n");
}

TEST_F(CommentAttributesTest, StandInTheOrderOfTheCalls)
{
    Attribute * const first = attribute("first", {1});
    CommentAttributes::setComment(attribute("second", {2}), &m_Comments);
    CommentAttributes::setComment(first, &m_Comments);
    EXPECT_EQ(m_Comments.getComment(m_Point), "second 2\nfirst 1\n");
}

TEST_F(CommentAttributesTest, BelongToEveryEntityOfTheAttribute)
{
    Point3D * const other = Point3D::create(0, 4, 5, 6);
    Attribute * const both = attribute("both", {1});
    both->addEntity(other);
    CommentAttributes::setComment(both, &m_Comments);
    CommentAttributes::setComment(attribute("one", {2}), &m_Comments);
    EXPECT_EQ(m_Comments.getComment(m_Point), "both 1\none 2\n");
    EXPECT_EQ(m_Comments.getComment(other), "both 1\n");
}

TEST_F(CommentAttributesTest, StandAsOftenAsTheEntity)
{
    Attribute * const twice = attribute("twice", {1});
    twice->addEntity(m_Point);
    EXPECT_EQ(commentOf(twice), "twice 1\ntwice 1\n");
}

TEST_F(CommentAttributesTest, OfAnEntityThatWasNeverSeenAreEmpty)
{
    EXPECT_EQ(m_Comments.getComment(m_Point), "");
    EXPECT_EQ(m_Comments.getComment(nullptr), "");
}

TEST_F(CommentAttributesTest, TreatNoNameInASpecialWay)
{
    EXPECT_EQ(commentOf(attribute("ANNOTATION:", {"a"})), "ANNOTATION: a\n");
}

TEST_F(CommentAttributesTest, PassNullOver)
{
    CommentAttributes::setComment(nullptr, &m_Comments);
    CommentAttributes::setComment(attribute("Note", {1}), nullptr);
    EXPECT_EQ(m_Comments.getComment(m_Point), "");
}

TEST_F(CommentAttributesTest, ACopySharesTheLinesAndOutlivesItsOriginal)
{
    auto original = std::make_unique<CommentAttributes>();
    CommentAttributes::setComment(attribute("first", {1}), original.get());
    CommentAttributes copy = *original;
    m_Comments = copy;
    CommentAttributes::setComment(attribute("second", {2}), original.get());
    original.reset();
    EXPECT_EQ(copy.getComment(m_Point), "first 1\nsecond 2\n");
    EXPECT_EQ(m_Comments.getComment(m_Point), "first 1\nsecond 2\n");
}

TEST_F(CommentAttributesTest, HaveNoVirtualOperations)
{
    EXPECT_FALSE(std::is_polymorphic_v<CommentAttributes>);
}

} // namespace
} // namespace transl_tk
