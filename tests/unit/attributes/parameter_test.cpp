#include "support/foreign_value.h"
#include "support/slots.h"
#include "walks.h"

#include <keld-transl/attributes/parameter.h>

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace transl_tk {
namespace {

using tests::contentOf;
using tests::ForeignValue;

struct FreeParameter
{
    void operator()(Parameter * parameter) const { Parameter::destruct(parameter); }
};
using OwnedParameter = std::unique_ptr<Parameter, FreeParameter>;

constexpr Parameter::Param AnyParam{3};

TEST(Parameter, IsMadeWithoutValues)
{
    OwnedParameter const parameter(Parameter::create(AnyParam));
    EXPECT_EQ(parameter->getParam(), 3);
    EXPECT_EQ(parameter->getNumValues(), 0);
}

TEST(Parameter, KeepsAnyNumberAsItsParam)
{
    for (int const number : {-2147483647 - 1, -1, 0, 1000, 2147483647}) {
        Parameter::Param const param{number};
        EXPECT_EQ(OwnedParameter(Parameter::create(param))->getParam(), number);
        EXPECT_EQ(OwnedParameter(Parameter::create(param, 1, 2, 3))->getParam(), number);
        EXPECT_EQ(OwnedParameter(Parameter::create(param, nullptr))->getParam(), number);
    }
}

TEST(Parameter, OfThreeDoublesHoldsThemInOrder)
{
    OwnedParameter const parameter(Parameter::create(AnyParam, 1.5, -2.5, 3.5));
    ASSERT_EQ(parameter->getNumValues(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(parameter->getValue(i)->getType(), 5);
    EXPECT_EQ(contentOf<double>(*parameter->getValue(0)), 1.5);
    EXPECT_EQ(contentOf<double>(*parameter->getValue(1)), -2.5);
    EXPECT_EQ(contentOf<double>(*parameter->getValue(2)), 3.5);
}

TEST(Parameter, AdoptsItsFirstValue)
{
    IValue * const value = IValue::create(7);
    OwnedParameter const parameter(Parameter::create(AnyParam, value));
    EXPECT_EQ(parameter->getNumValues(), 1);
    EXPECT_EQ(parameter->getValue(0), value);
}

TEST(Parameter, ANullValueIsAValue)
{
    OwnedParameter const parameter(Parameter::create(AnyParam, nullptr));
    parameter->addValue(nullptr);
    EXPECT_EQ(parameter->getNumValues(), 2);
    EXPECT_EQ(parameter->getValue(0), nullptr);
    EXPECT_EQ(parameter->getValue(1), nullptr);
}

TEST(Parameter, AppendsValuesAndFreesEachOnce)
{
    std::vector<int> freed;
    OwnedParameter parameter(Parameter::create(AnyParam, new ForeignValue(11, &freed)));
    for (int type = 12; type < 17; ++type) {
        auto * const value = new ForeignValue(type, &freed);
        parameter->addValue(value);
        EXPECT_EQ(parameter->getValue(type - 11), value);
    }
    EXPECT_EQ(parameter->getNumValues(), 6);
    EXPECT_TRUE(freed.empty());
    parameter.reset();
    EXPECT_EQ(freed, (std::vector{11, 12, 13, 14, 15, 16}));
}

TEST(Parameter, NullIsFreedWithoutFault)
{
    Parameter::destruct(nullptr);
}

struct FurtherOperation : Parameter
{
    virtual void further() {}
};

TEST(Parameter, TableHoldsItsOperationsThenTheDestructor)
{
    using tests::slotOf;
    EXPECT_EQ(slotOf(&Parameter::getParam), 0U);
    EXPECT_EQ(slotOf(&Parameter::addValue), 1U);
    EXPECT_EQ(slotOf(&Parameter::getNumValues), 2U);
    EXPECT_EQ(slotOf(&Parameter::getValue), 3U);
    EXPECT_EQ(slotOf(&FurtherOperation::further), 6U); // the destructor takes two
}

} // namespace
} // namespace transl_tk
