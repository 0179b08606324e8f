#include "support/slots.h"

#include <keld-transl/attributes/value.h>

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

using transl_tk::IValue;

namespace {

struct FreeValue
{
    void operator()(IValue * value) const { IValue::destruct(value); }
};
using OwnedValue = std::unique_ptr<IValue, FreeValue>;

template <class T> OwnedValue aValue(T const & content)
{
    return OwnedValue(IValue::create(content));
}

template <class T> T contentOf(IValue & value)
{
    T content{};
    value.getValue(content);
    return content;
}

/// One value of each type, in the order of the type numbers.
std::vector<OwnedValue> oneOfEachType()
{
    std::vector<OwnedValue> values;
    values.push_back(aValue("text"));
    values.push_back(aValue(7));
    values.push_back(aValue(true));
    values.push_back(aValue(1.5F));
    values.push_back(aValue(2.5));
    values.push_back(aValue(static_cast<unsigned char>(200)));
    return values;
}

using Access = std::function<void(IValue &)>;

std::vector<Access> const & getters()
{
    static std::vector<Access> const operations{
        [](IValue & value) { contentOf<char *>(value); },
        [](IValue & value) { contentOf<int>(value); },
        [](IValue & value) { contentOf<bool>(value); },
        [](IValue & value) { contentOf<float>(value); },
        [](IValue & value) { contentOf<double>(value); },
        [](IValue & value) { contentOf<unsigned char>(value); },
    };
    return operations;
}

std::vector<Access> const & setters()
{
    static std::vector<Access> const operations{
        [](IValue & value) { value.setValue("other"); },
        [](IValue & value) { value.setValue(8); },
        [](IValue & value) { value.setValue(false); },
        [](IValue & value) { value.setValue(9.5F); },
        [](IValue & value) { value.setValue(10.5); },
        [](IValue & value) { value.setValue(static_cast<unsigned char>(11)); },
    };
    return operations;
}

void expectOnlyOwnTypeSurvives(std::vector<Access> const & operations)
{
    auto const values = oneOfEachType();
    ASSERT_EQ(operations.size(), values.size());
    for (std::size_t own = 0; own < values.size(); ++own) {
        for (std::size_t asked = 0; asked < operations.size(); ++asked) {
            SCOPED_TRACE("type " + std::to_string(own + 1) + " as " + std::to_string(asked + 1));
            if (asked == own)
                operations[asked](*values[own]);
            else
                EXPECT_EXIT(operations[asked](*values[own]), testing::KilledBySignal(SIGABRT), "");
        }
    }
}

} // namespace

TEST(Value, TypesAreNumberedFromTextToByte)
{
    auto const values = oneOfEachType();
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(values[i]->getType(), static_cast<int>(i) + 1);
}

TEST(Value, HoldsWhatItWasMadeWith)
{
    auto const values = oneOfEachType();
    EXPECT_STREQ(contentOf<char *>(*values[0]), "text");
    EXPECT_EQ(contentOf<int>(*values[1]), 7);
    EXPECT_EQ(contentOf<bool>(*values[2]), true);
    EXPECT_EQ(contentOf<float>(*values[3]), 1.5F);
    EXPECT_EQ(contentOf<double>(*values[4]), 2.5);
    EXPECT_EQ(contentOf<unsigned char>(*values[5]), 200);
}

TEST(Value, HoldsWhatWasSetLast)
{
    auto const values = oneOfEachType();
    for (std::size_t i = 0; i < values.size(); ++i)
        setters()[i](*values[i]);
    EXPECT_STREQ(contentOf<char *>(*values[0]), "other");
    EXPECT_EQ(contentOf<int>(*values[1]), 8);
    EXPECT_EQ(contentOf<bool>(*values[2]), false);
    EXPECT_EQ(contentOf<float>(*values[3]), 9.5F);
    EXPECT_EQ(contentOf<double>(*values[4]), 10.5);
    EXPECT_EQ(contentOf<unsigned char>(*values[5]), 11);
}

TEST(Value, OfIntSevenIsOfTypeTwoAndGivesSeven)
{
    auto const value = aValue(7);
    EXPECT_EQ(value->getType(), 2);
    EXPECT_EQ(contentOf<int>(*value), 7);
}

TEST(Value, OfNullTextIsNull)
{
    EXPECT_EQ(IValue::create(static_cast<char const *>(nullptr)), nullptr);
}

TEST(Value, OfEmptyTextIsAText)
{
    auto const value = aValue("");
    EXPECT_EQ(value->getType(), 1);
    EXPECT_STREQ(contentOf<char *>(*value), "");
}

TEST(Value, CopiesTheTextItIsMadeWith)
{
    char text[] = "abc";
    auto const value = aValue(static_cast<char const *>(text));
    text[0] = 'X';
    EXPECT_STREQ(contentOf<char *>(*value), "abc");
}

TEST(Value, CopiesTheTextItIsSetTo)
{
    char text[] = "abc";
    auto const value = aValue("");
    value->setValue(static_cast<char const *>(text));
    text[0] = 'X';
    EXPECT_STREQ(contentOf<char *>(*value), "abc");
}

TEST(Value, GivesTheStoredTextItself)
{
    auto const value = aValue("abc");
    contentOf<char *>(*value)[0] = 'X';
    EXPECT_STREQ(contentOf<char *>(*value), "Xbc");
}

TEST(Value, SetToNullTextKeepsItsText)
{
    auto const value = aValue("abc");
    value->setValue(static_cast<char const *>(nullptr));
    EXPECT_STREQ(contentOf<char *>(*value), "abc");
}

TEST(Value, NullIsFreedWithoutFault)
{
    IValue::destruct(nullptr);
}

TEST(ValueDeathTest, ReadingAnotherTypeEndsTheProcess)
{
    expectOnlyOwnTypeSurvives(getters());
}

TEST(ValueDeathTest, WritingAnotherTypeEndsTheProcess)
{
    expectOnlyOwnTypeSurvives(setters());
}

TEST(Value, OperationsStandInTableOrderBehindTheDestructor)
{
    using tests::slotOf;
    EXPECT_EQ(slotOf(&IValue::getType), 2U);
    EXPECT_EQ(slotOf<void (IValue::*)(unsigned char &)>(&IValue::getValue), 3U);
    EXPECT_EQ(slotOf<void (IValue::*)(double &)>(&IValue::getValue), 4U);
    EXPECT_EQ(slotOf<void (IValue::*)(float &)>(&IValue::getValue), 5U);
    EXPECT_EQ(slotOf<void (IValue::*)(bool &)>(&IValue::getValue), 6U);
    EXPECT_EQ(slotOf<void (IValue::*)(int &)>(&IValue::getValue), 7U);
    EXPECT_EQ(slotOf<void (IValue::*)(char *&)>(&IValue::getValue), 8U);
    EXPECT_EQ(slotOf<void (IValue::*)(unsigned char const &)>(&IValue::setValue), 9U);
    EXPECT_EQ(slotOf<void (IValue::*)(double const &)>(&IValue::setValue), 10U);
    EXPECT_EQ(slotOf<void (IValue::*)(float const &)>(&IValue::setValue), 11U);
    EXPECT_EQ(slotOf<void (IValue::*)(bool const &)>(&IValue::setValue), 12U);
    EXPECT_EQ(slotOf<void (IValue::*)(int const &)>(&IValue::setValue), 13U);
    EXPECT_EQ(slotOf<void (IValue::*)(char const *)>(&IValue::setValue), 14U);
}
