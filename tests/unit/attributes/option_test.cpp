#include "support/foreign_value.h"
#include "support/slots.h"

#include <keld-transl/attributes/option.h>

#include <csignal>
#include <gtest/gtest.h>
#include <memory>

using tests::ForeignValue;
using transl_tk::IOption;
using transl_tk::IValue;

namespace {

struct FreeOption
{
    void operator()(IOption * option) const { IOption::destruct(option); }
};
using OwnedOption = std::unique_ptr<IOption, FreeOption>;

OwnedOption anOption()
{
    return OwnedOption(IOption::create("name", "description"));
}

template <class T> T contentOf(IValue & value)
{
    T content{};
    value.getValue(content);
    return content;
}

/// Adds a value of `before`, sets it from a source of `after`, and gives back what it then holds.
/// Expects the source to be as it was.
template <class T, class Given> T afterSetting(IOption & option, Given before, Given after)
{
    int const index = option.getNumValues();
    option.addValue(IValue::create(before));
    IValue * const source = IValue::create(after);
    option.setValue(index, source);
    EXPECT_EQ(option.getNumValues(), index + 1);
    EXPECT_EQ(contentOf<T>(*source), T(after));
    IValue::destruct(source);
    return contentOf<T>(*option.getValue(index));
}

} // namespace

TEST(Option, KeepsCopiesOfNameAndDescription)
{
    char name[] = "name";
    char description[] = "description";
    OwnedOption const option(IOption::create(name, description));
    name[0] = description[0] = 'X';
    EXPECT_STREQ(option->getName(), "name");
    EXPECT_STREQ(option->getDescription(), "description");
    EXPECT_EQ(option->getNumValues(), 0);
}

TEST(Option, OfNullTextIsNull)
{
    EXPECT_EQ(IOption::create(nullptr, "description"), nullptr);
    EXPECT_EQ(IOption::create("name", nullptr), nullptr);
}

TEST(Option, AdoptsItsFirstValue)
{
    IValue * const value = IValue::create(7);
    OwnedOption const option(IOption::create("name", value, "description"));
    EXPECT_EQ(option->getNumValues(), 1);
    EXPECT_EQ(option->getValue(0), value);
    EXPECT_STREQ(option->getName(), "name");
    EXPECT_STREQ(option->getDescription(), "description");
}

TEST(Option, OfNullValueIsNull)
{
    EXPECT_EQ(IOption::create("name", static_cast<IValue *>(nullptr), "description"), nullptr);
}

TEST(Option, OfNullTextLeavesTheValueWithTheCaller)
{
    std::vector<int> freed;
    ForeignValue value(7, &freed);
    EXPECT_EQ(IOption::create(nullptr, &value, "description"), nullptr);
    EXPECT_EQ(IOption::create("name", &value, nullptr), nullptr);
    EXPECT_TRUE(freed.empty());
}

TEST(Option, AppendsValuesInOrder)
{
    auto const option = anOption();
    IValue * const first = IValue::create(1);
    IValue * const second = IValue::create("two");
    option->addValue(first);
    option->addValue(second);
    EXPECT_EQ(option->getNumValues(), 2);
    EXPECT_EQ(option->getValue(0), first);
    EXPECT_EQ(option->getValue(1), second);
}

TEST(Option, RefusesANullValueWithAText)
{
    auto const option = anOption();
    option->addValue(IValue::create(1));
    try {
        option->addValue(nullptr);
        FAIL() << "nothing was thrown";
    } catch (char const * text) {
        EXPECT_STREQ(text, "NULL value");
    }
    EXPECT_EQ(option->getNumValues(), 1);
}

TEST(Option, SetValueTakesTheContentOfASourceOfTheSameType)
{
    auto const option = anOption();
    EXPECT_EQ(afterSetting<int>(*option, 1, 2), 2);
    EXPECT_EQ(afterSetting<bool>(*option, false, true), true);
    EXPECT_EQ(afterSetting<float>(*option, 1.5F, 2.5F), 2.5F);
    EXPECT_EQ(afterSetting<double>(*option, 1.25, 2.25), 2.25);
    EXPECT_EQ(afterSetting<unsigned char>(*option, static_cast<unsigned char>(1),
                                          static_cast<unsigned char>(255)),
              255);

    option->addValue(IValue::create("before"));
    IValue * const source = IValue::create("after");
    option->setValue(5, source);
    EXPECT_STREQ(contentOf<char *>(*option->getValue(5)), "after");
    EXPECT_STREQ(contentOf<char *>(*source), "after");
    IValue::destruct(source);
    EXPECT_STREQ(contentOf<char *>(*option->getValue(5)), "after");
}

TEST(Option, SetValueFromASourceOfUnknownTypeChangesNothing)
{
    auto const option = anOption();
    option->addValue(IValue::create(1));
    for (int type : {-1, 0, 7}) {
        ForeignValue source(type);
        option->setValue(0, &source);
        EXPECT_EQ(contentOf<int>(*option->getValue(0)), 1);
    }
}

TEST(OptionDeathTest, SetValueOfAnotherTypeEndsTheProcess)
{
    auto const option = anOption();
    option->addValue(IValue::create(1));
    IValue * const source = IValue::create(2.5);
    EXPECT_EXIT(option->setValue(0, source), testing::KilledBySignal(SIGABRT), "");
    IValue::destruct(source);
}

TEST(Option, GivesACopyOfItsList)
{
    auto const option = anOption();
    option->addValue(IValue::create(1));
    auto values = option->getValues();
    ASSERT_EQ(values.size(), 1U);
    EXPECT_EQ(values[0], option->getValue(0));
    values.push_back(values[0]);
    EXPECT_EQ(option->getNumValues(), 1);
}

TEST(Option, FreesItsValuesFromFirstToLast)
{
    std::vector<int> freed;
    IOption * const option = IOption::create("name", new ForeignValue(11, &freed), "description");
    option->addValue(new ForeignValue(12, &freed));
    option->addValue(new ForeignValue(13, &freed));
    IOption::destruct(option);
    EXPECT_EQ(freed, (std::vector{11, 12, 13}));
}

TEST(Option, NullIsFreedWithoutFault)
{
    IOption::destruct(nullptr);
}

TEST(Option, OperationsStandInTableOrderBehindTheDestructor)
{
    using tests::slotOf;
    EXPECT_EQ(slotOf(&IOption::getName), 2U);
    EXPECT_EQ(slotOf(&IOption::addValue), 3U);
    EXPECT_EQ(slotOf(&IOption::setValue), 4U);
    EXPECT_EQ(slotOf(&IOption::getNumValues), 5U);
    EXPECT_EQ(slotOf(&IOption::getValue), 6U);
    EXPECT_EQ(slotOf(&IOption::getValues), 7U);
    EXPECT_EQ(slotOf(&IOption::getDescription), 8U);
}
