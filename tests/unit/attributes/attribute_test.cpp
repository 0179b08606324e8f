#include "support/foreign_value.h"
#include "support/models.h"
#include "support/slots.h"
#include "walks.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/uv_curve.h>

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace transl_tk {
namespace {

using tests::contentOf;
using tests::ForeignValue;
using Colour = std::array<int, 4>;
using Attributes = std::vector<Attribute *>;
using Entities = std::vector<Base *>;

constexpr Attribute::Type AnyType{4711};

Attribute * anAttribute(char const * name = "name")
{
    return Attribute::create(name, AnyType);
}

Attributes & listed()
{
    return tests::currentSubPool().m_Attributes;
}

Point3D * aPoint()
{
    return Point3D::create(0, 1, 2, 3);
}

Entities entitiesOf(Attribute & attribute)
{
    return tests::walked<Base>(attribute, &Attribute::forEachEntity);
}

Colour colourOf(Attribute & attribute)
{
    unsigned char colour[4] = {1, 2, 3, 4};
    attribute.getColor(colour);
    return {colour[0], colour[1], colour[2], colour[3]};
}

void addBytes(Attribute & attribute, std::vector<int> const & bytes)
{
    for (int const byte : bytes)
        attribute.addValue(static_cast<unsigned char>(byte));
}

class AttributeTest : public testing::Test
{
protected:
    tests::ScopedPool m_Pool{"first"};
};

TEST_F(AttributeTest, IsMadeEmptyWithACopyOfItsName)
{
    char name[] = "name";
    Attribute * const attribute = Attribute::create(name, Attribute::Comment);
    name[0] = 'X';
    EXPECT_STREQ(attribute->getName(), "name");
    EXPECT_EQ(attribute->getType(), Attribute::Comment);
    EXPECT_EQ(attribute->getNumValues(), 0);
    EXPECT_TRUE(entitiesOf(*attribute).empty());
}

TEST_F(AttributeTest, OfANullNameIsNullAndIsNotListed)
{
    anAttribute();
    EXPECT_EQ(Attribute::create(nullptr, AnyType), nullptr);
    EXPECT_EQ(listed().size(), 1U);
}

TEST_F(AttributeTest, MayHaveAnEmptyName)
{
    EXPECT_STREQ(Attribute::create("", Attribute::Dictionary)->getName(), "");
}

TEST(AttributeWithoutPool, IsNotMade)
{
    EXPECT_EQ(anAttribute(), nullptr);
    Attribute::destruct(nullptr);
}

TEST_F(AttributeTest, NamesTheTypesThatTheToolkitActsOn)
{
    EXPECT_EQ(Attribute::Product, 2);
    EXPECT_EQ(Attribute::Comment, 7);
    EXPECT_EQ(Attribute::Dictionary, 14);
}

TEST_F(AttributeTest, KeepsAnyNumberAsItsType)
{
    for (int const number : {-2147483647 - 1, -1, 0, 5, 16, 17, 2147483647})
        EXPECT_EQ(Attribute::create("", Attribute::Type{number})->getType(), number);
}

TEST_F(AttributeTest, StandsInTheListOfItsSubPoolInOrderOfCreation)
{
    Attribute * const first = anAttribute("b");
    Attribute * const second = anAttribute("a");
    EXPECT_EQ(listed(), (Attributes{first, second}));
    Pool::construct("second");
    EXPECT_TRUE(listed().empty());
}

TEST_F(AttributeTest, LeavesTheListWithEveryOccurrence)
{
    Attribute * const first = anAttribute();
    Attribute * const second = anAttribute();
    Attribute * const third = anAttribute();
    listed().push_back(second);
    Attribute::destruct(second);
    EXPECT_EQ(listed(), (Attributes{first, third}));
    Attribute::destruct(nullptr);
    EXPECT_EQ(listed(), (Attributes{first, third}));
}

TEST_F(AttributeTest, FreedUnderAnotherSubPoolLeavesNoEntryAnywhere)
{
    Attribute * const gone = anAttribute();
    Attribute * const kept = anAttribute();
    Pool::construct("a");
    Attribute * const before = anAttribute();
    Pool::construct("z");
    Attribute * const behind = anAttribute();
    Attribute::destruct(gone);
    EXPECT_EQ(listed(), (Attributes{behind}));
    Pool::getInstance()->setCurrent("a");
    EXPECT_EQ(listed(), (Attributes{before}));
    Pool::getInstance()->setCurrent("first");
    EXPECT_EQ(listed(), (Attributes{kept}));
}

TEST_F(AttributeTest, HoldsAValueOfEachType)
{
    Attribute * const attribute = anAttribute();
    attribute->addValue("text");
    attribute->addValue(7);
    attribute->addValue(true);
    attribute->addValue(1.5F);
    attribute->addValue(2.5);
    attribute->addValue(static_cast<unsigned char>(200));
    ASSERT_EQ(attribute->getNumValues(), 6);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(attribute->getValue(i)->getType(), i + 1);
    EXPECT_STREQ(contentOf<char *>(*attribute->getValue(0)), "text");
    EXPECT_EQ(contentOf<int>(*attribute->getValue(1)), 7);
    EXPECT_EQ(contentOf<bool>(*attribute->getValue(2)), true);
    EXPECT_EQ(contentOf<float>(*attribute->getValue(3)), 1.5F);
    EXPECT_EQ(contentOf<double>(*attribute->getValue(4)), 2.5);
    EXPECT_EQ(contentOf<unsigned char>(*attribute->getValue(5)), 200);
}

TEST_F(AttributeTest, ANullTextAddsNoValue)
{
    Attribute * const attribute = anAttribute();
    attribute->addValue(1);
    attribute->addValue(static_cast<char const *>(nullptr));
    EXPECT_EQ(attribute->getNumValues(), 1);
}

TEST_F(AttributeTest, ANullValueIsAValue)
{
    Attribute * const attribute = anAttribute();
    attribute->addValue(static_cast<IValue *>(nullptr));
    attribute->addValue(7);
    ASSERT_EQ(attribute->getNumValues(), 2);
    EXPECT_EQ(attribute->getValue(0), nullptr);
    EXPECT_EQ(contentOf<int>(*attribute->getValue(1)), 7);
}

TEST_F(AttributeTest, AdoptsItsValuesAndFreesEachOnce)
{
    std::vector<int> freed;
    Attribute * const attribute = anAttribute();
    std::vector<int> expected;
    for (int type = 11; type < 20; ++type) {
        auto * const value = new ForeignValue(type, &freed);
        attribute->addValue(value);
        EXPECT_EQ(attribute->getValue(type - 11), value);
        expected.push_back(type);
    }
    attribute->addValue(static_cast<IValue *>(nullptr));
    EXPECT_TRUE(freed.empty());
    Attribute::destruct(attribute);
    EXPECT_EQ(freed, expected);
}

TEST_F(AttributeTest, TakesItsColourFromTheFirstFourBytes)
{
    Attribute * const attribute = anAttribute();
    attribute->addValue(5);
    addBytes(*attribute, {10, 20, 30, 40, 50});
    EXPECT_EQ(colourOf(*attribute), (Colour{10, 20, 30, 40}));
}

TEST_F(AttributeTest, MissingComponentsOfItsColourAreZeroAndAHundred)
{
    Attribute * const attribute = anAttribute();
    EXPECT_EQ(colourOf(*attribute), (Colour{0, 0, 0, 100}));
    addBytes(*attribute, {1, 2});
    EXPECT_EQ(colourOf(*attribute), (Colour{1, 2, 0, 100}));
    addBytes(*attribute, {3});
    EXPECT_EQ(colourOf(*attribute), (Colour{1, 2, 3, 100}));
}

TEST_F(AttributeTest, PassesOverOtherValuesForItsColour)
{
    Attribute * const attribute = anAttribute();
    attribute->addValue(static_cast<IValue *>(nullptr));
    attribute->addValue(new ForeignValue(0));
    attribute->addValue(new ForeignValue(7));
    for (int const byte : {255, 254}) {
        addBytes(*attribute, {byte});
        attribute->addValue("1");
        attribute->addValue(true);
        attribute->addValue(1.5);
        attribute->addValue(1.5F);
    }
    EXPECT_EQ(colourOf(*attribute), (Colour{255, 254, 0, 100}));
}

TEST_F(AttributeTest, WalksEachOfItsEntities)
{
    Attribute * const attribute = anAttribute();
    Entities expected;
    for (int i = 0; i < 10; ++i) {
        expected.push_back(aPoint());
        attribute->addEntity(expected.back());
        ASSERT_EQ(entitiesOf(*attribute), expected);
    }
}

TEST_F(AttributeTest, WalkStopsAtTheFirstFalse)
{
    Attribute * const attribute = anAttribute();
    for (int i = 0; i < 5; ++i)
        attribute->addEntity(aPoint());
    auto const stoppedAt = [&](int last) {
        return tests::stoppedAt<Base>(last, *attribute, &Attribute::forEachEntity);
    };
    EXPECT_EQ(stoppedAt(1), std::pair(1, false));
    EXPECT_EQ(stoppedAt(3), std::pair(3, false));
    EXPECT_EQ(stoppedAt(6), std::pair(5, true));
}

TEST_F(AttributeTest, WalkWithoutEntitiesAnswersTrue)
{
    EXPECT_TRUE(anAttribute()->forEachEntity([](Base *, void *) { return false; }, nullptr));
}

TEST_F(AttributeTest, AnEntityAddedTwiceStandsTwiceAndGoesAsOne)
{
    Attribute * const attribute = anAttribute();
    Point3D * const twice = aPoint();
    Point3D * const once = aPoint();
    for (Base * const entity : {twice, once, twice})
        attribute->addEntity(entity);
    EXPECT_EQ(entitiesOf(*attribute), (Entities{twice, once, twice}));
    attribute->removeEntity(twice);
    EXPECT_EQ(entitiesOf(*attribute), (Entities{once}));
    attribute->removeEntity(twice);
    attribute->removeEntity(nullptr);
    EXPECT_EQ(entitiesOf(*attribute), (Entities{once}));
}

TEST_F(AttributeTest, ANullEntityIsNotAdded)
{
    Attribute * const attribute = anAttribute();
    attribute->addEntity(nullptr);
    EXPECT_TRUE(entitiesOf(*attribute).empty());
}

TEST_F(AttributeTest, PassesOverEntitiesThatHaveDied)
{
    Attribute * const attribute = anAttribute();
    Point3D * const dead = aPoint();
    Point3D * const alive = aPoint();
    attribute->addEntity(dead);
    attribute->addEntity(alive);
    Point3D::destruct(dead);
    EXPECT_EQ(entitiesOf(*attribute), (Entities{alive}));
    attribute->removeEntity(dead);
    EXPECT_EQ(entitiesOf(*attribute), (Entities{alive}));
    Point3D::destruct(alive);
    EXPECT_TRUE(attribute->forEachEntity([](Base *, void *) { return false; }, nullptr));
}

TEST_F(AttributeTest, HangsOnEntitiesOfDifferentKindsWithOneId)
{
    Attribute * const attribute = anAttribute();
    UVCurve * const curve = UVCurve::create(5, nullptr);
    Entities const entities{Point3D::create(5, 1, 2, 3), curve, Surface::create(5, nullptr)};
    for (Base * const entity : entities)
        attribute->addEntity(entity);
    EXPECT_EQ(entitiesOf(*attribute), entities);
    UVCurve::destruct(curve);
    EXPECT_EQ(entitiesOf(*attribute), (Entities{entities[0], entities[2]}));
}

TEST_F(AttributeTest, PassesOverTheEntitiesOfOtherSubPoolsWhileTheyAreNotCurrent)
{
    Attribute * const attribute = anAttribute();
    Point3D * const point = aPoint();
    attribute->addEntity(point);
    Pool::construct("second");
    aPoint();
    EXPECT_TRUE(entitiesOf(*attribute).empty());
    Pool::getInstance()->setCurrent("first");
    EXPECT_EQ(entitiesOf(*attribute), (Entities{point}));
}

TEST_F(AttributeTest, WalkBearsACallbackThatAddsAndRemoves)
{
    struct Context
    {
        Attribute * attribute;
        Entities seen;
    } context{anAttribute(), {}};
    for (int i = 0; i < 4; ++i)
        context.attribute->addEntity(aPoint());
    auto const change = [](Base * entity, void * user) {
        auto & [attribute, seen] = *static_cast<Context *>(user);
        seen.push_back(entity);
        if (seen.size() <= 20)
            attribute->addEntity(aPoint());
        if (seen.size() % 2 == 0)
            attribute->removeEntity(entity);
        return true;
    };
    EXPECT_TRUE(context.attribute->forEachEntity(change, &context));
    EXPECT_GE(context.seen.size(), 4U);

    auto const removeAll = [](Base *, void * user) {
        auto & all = *static_cast<Context *>(user);
        for (Base * const entity : entitiesOf(*all.attribute))
            all.attribute->removeEntity(entity);
        return true;
    };
    EXPECT_TRUE(context.attribute->forEachEntity(removeAll, &context));
    EXPECT_TRUE(entitiesOf(*context.attribute).empty());
}

TEST_F(AttributeTest, ItsEndLeavesItsEntitiesAlone)
{
    Attribute * const attribute = anAttribute();
    attribute->addEntity(aPoint());
    Attribute::destruct(attribute);
    EXPECT_EQ(tests::points().size(), 1U);
}

TEST_F(AttributeTest, ClearFreesEachWithItsValuesInOrderOfCreation)
{
    std::vector<int> freed;
    for (int const type : {13, 11, 12}) {
        Attribute * const attribute = anAttribute();
        attribute->addValue(new ForeignValue(type, &freed));
        attribute->addEntity(aPoint());
    }
    Pool::construct("second");
    Attribute * const other = anAttribute();
    Pool::getInstance()->setCurrent("first");
    Pool::getInstance()->clear();
    EXPECT_EQ(freed, (std::vector{13, 11, 12}));
    EXPECT_TRUE(listed().empty());
    Pool::getInstance()->clear();
    Pool::getInstance()->setCurrent("second");
    EXPECT_EQ(listed(), (Attributes{other}));
}

TEST_F(AttributeTest, GoesWithItsSubPool)
{
    std::vector<int> freed;
    anAttribute()->addValue(new ForeignValue(11, &freed));
    Pool::construct("second");
    Pool::getInstance()->deleteSubPool("first");
    EXPECT_EQ(freed, (std::vector{11}));
}

TEST_F(AttributeTest, ClearFreesAttributesAfterEntities)
{
    static bool storesWereEmpty;
    struct Witness : ForeignValue
    {
        Witness() : ForeignValue(11) {}
        ~Witness() override { storesWereEmpty = tests::points().empty(); }
    };
    storesWereEmpty = false;
    anAttribute()->addValue(new Witness);
    aPoint();
    Pool::getInstance()->clear();
    EXPECT_TRUE(storesWereEmpty);
}

TEST(AttributeTable, OperationsStandInOrderBehindTheDestructor)
{
    using tests::slotOf;
    EXPECT_EQ(slotOf<void (Attribute::*)(IValue *)>(&Attribute::addValue), 2U);
    EXPECT_EQ(slotOf<void (Attribute::*)(unsigned char const &)>(&Attribute::addValue), 3U);
    EXPECT_EQ(slotOf<void (Attribute::*)(double const &)>(&Attribute::addValue), 4U);
    EXPECT_EQ(slotOf<void (Attribute::*)(float const &)>(&Attribute::addValue), 5U);
    EXPECT_EQ(slotOf<void (Attribute::*)(bool const &)>(&Attribute::addValue), 6U);
    EXPECT_EQ(slotOf<void (Attribute::*)(int const &)>(&Attribute::addValue), 7U);
    EXPECT_EQ(slotOf<void (Attribute::*)(char const *)>(&Attribute::addValue), 8U);
    EXPECT_EQ(slotOf(&Attribute::getType), 9U);
    EXPECT_EQ(slotOf(&Attribute::getName), 10U);
    EXPECT_EQ(slotOf(&Attribute::getNumValues), 11U);
    EXPECT_EQ(slotOf(&Attribute::getValue), 12U);
    EXPECT_EQ(slotOf(&Attribute::addEntity), 13U);
    EXPECT_EQ(slotOf(&Attribute::removeEntity), 14U);
    EXPECT_EQ(slotOf(&Attribute::forEachEntity), 15U);
}

} // namespace
} // namespace transl_tk
