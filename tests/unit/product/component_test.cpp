#include "product_fixture.h"
#include "support/slots.h"

#include <algorithm>
#include <random>

namespace transl_tk {
namespace {

/// Assemblies and parts alike.
class ComponentTest : public testing::TestWithParam<Component * (*)(char const * name)>
{
protected:
    Component * component(char const * name) { return GetParam()(name); }

    tests::ScopedPool m_Pool;
};

Component * aPart(char const * name)
{
    return Part::create(0, name);
}

Component * anAssembly(char const * name)
{
    return Assembly::create(0, name);
}

INSTANTIATE_TEST_SUITE_P(Part, ComponentTest, testing::Values(aPart));
INSTANTIATE_TEST_SUITE_P(Assembly, ComponentTest, testing::Values(anAssembly));

TEST_P(ComponentTest, NamesAreMadeUnique)
{
    EXPECT_STREQ(component("Body")->getName(), "Body");
    EXPECT_STREQ(component("Body")->getName(), "Body@1");
    EXPECT_STREQ(component("Body@1")->getName(), "Body@2");
}

TEST_P(ComponentTest, ANullNameIsAnEmptyOne)
{
    EXPECT_STREQ(component(nullptr)->getName(), "");
    EXPECT_STREQ(component("")->getName(), "@1");
}

TEST_P(ComponentTest, ItsNameIsFreeAfterItsEnd)
{
    Component * const first = component("x");
    Component * const second = component("x");
    component("x");
    Hierarchy::destruct(second);
    EXPECT_STREQ(component("x")->getName(), "x@1");
    Hierarchy::destruct(first);
    EXPECT_STREQ(component("x")->getName(), "x");
    EXPECT_EQ(tests::currentSubPool().m_Names.size(), 3U);
}

TEST_P(ComponentTest, LabelsPassThroughUntouched)
{
    Component * const labelled = component("labelled");
    EXPECT_STREQ(labelled->getFirstLabel(), "");
    EXPECT_STREQ(labelled->getSecondLabel(), "");
    labelled->setFirstLabel("<first> \x01\xFF");
    labelled->setSecondLabel("second");
    EXPECT_STREQ(labelled->getFirstLabel(), "<first> \x01\xFF");
    EXPECT_STREQ(labelled->getSecondLabel(), "second");
    labelled->setFirstLabel(nullptr);
    labelled->setSecondLabel(nullptr);
    EXPECT_STREQ(labelled->getFirstLabel(), "");
    EXPECT_STREQ(labelled->getSecondLabel(), "");
}

TEST_P(ComponentTest, StartsWithMillimetresOfScaleOneAndAngularTypeTwo)
{
    Units * const units = component("new")->getUnits();
    EXPECT_EQ(units->getLengthType(), Units::Millimetre);
    EXPECT_EQ(units->getAngularType(), 2);
    EXPECT_EQ(units->getLengthScale(), 1.0);
    EXPECT_EQ(units->getAngularScale(), 1.0);
}

TEST_P(ComponentTest, SetUnitsAdoptsAndNullOrItsOwnChangesNothing)
{
    Component * const measured = component("measured");
    Units * const inches = Units::create(Units::Inch, Units::AngularType{0}, 2.0, 1.0);
    measured->setUnits(inches);
    EXPECT_EQ(measured->getUnits(), inches);
    measured->setUnits(nullptr);
    measured->setUnits(inches);
    EXPECT_EQ(measured->getUnits(), inches);
    EXPECT_EQ(measured->getUnits()->getLengthScale(), 2.0);
}

TEST_P(ComponentTest, AnInstanceAddedTwiceStandsTwiceAndGoesAtOnce)
{
    Component * const placed = component("placed");
    Instance * const instance = Instance::create(0, placed);
    Instance * const other = Instance::create(0, placed);
    placed->addInstance(instance);
    std::vector<Instance *> found = tests::instancesOf(placed);
    std::sort(found.begin(), found.end());
    std::vector<Instance *> expected = {instance, instance, other};
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(found, expected);
    placed->removeInstance(instance);
    EXPECT_EQ(tests::instancesOf(placed), std::vector<Instance *>{other});
    placed->removeInstance(instance);
    placed->removeInstance(nullptr);
    placed->addInstance(nullptr);
    EXPECT_EQ(tests::instancesOf(placed), std::vector<Instance *>{other});
}

TEST_P(ComponentTest, TheWalkOverInstancesStopsAtTheFirstFalse)
{
    Component * const placed = component("placed");
    auto const stop = [](Instance *, void * calls) { return ++*static_cast<int *>(calls) < 2; };
    int calls = 0;
    EXPECT_TRUE(placed->forEachInstance(stop, &calls));
    for (int i = 0; i < 3; ++i)
        Instance::create(0, placed);
    EXPECT_FALSE(placed->forEachInstance(stop, &calls));
    EXPECT_EQ(calls, 2);
}

TEST_P(ComponentTest, TheWalkOverInstancesPassesOverWhatItsCallbackFreed)
{
    Component * const placed = component("placed");
    for (int i = 0; i < 100; ++i)
        Instance::create(0, placed);
    std::vector<Instance *> all = tests::instancesOf(placed);
    int calls = 0;
    struct Context
    {
        std::vector<Instance *> & left;
        int & calls;
    } context{all, calls};
    placed->forEachInstance(
        [](Instance * instance, void * user) {
            auto & [left, count] = *static_cast<Context *>(user);
            ++count;
            std::erase(left, instance);
            Hierarchy::destruct(left.back());
            left.pop_back();
            return true;
        },
        &context);
    EXPECT_EQ(calls, 50);
    EXPECT_EQ(tests::instancesOf(placed).size(), 50U);
}

TEST_P(ComponentTest, TakesItsInstancesAlongAndTheyLeaveTheirAssemblies)
{
    Component * const placed = component("placed");
    Assembly * const assembly = Assembly::create(0, "assembly");
    for (int i = 0; i < 50; ++i)
        assembly->addChild(Instance::create(0, placed));
    Instance * const loose = Instance::create(0, placed);
    placed->addInstance(loose);
    Hierarchy::destruct(placed);
    EXPECT_TRUE(tests::childrenOf(assembly).empty());
    EXPECT_EQ(tests::hierarchies().size(), 1U);
}

TEST_P(ComponentTest, ManyInstancesGoOneByOneInAnyOrder)
{
    Component * const placed = component("placed");
    std::vector<Instance *> all;
    for (int i = 0; i < 20000; ++i)
        all.push_back(Instance::create(0, placed));
    std::shuffle(all.begin(), all.end(), std::mt19937(7));
    while (all.size() > 5) {
        Hierarchy::destruct(all.back());
        all.pop_back();
    }
    std::vector<Instance *> left = tests::instancesOf(placed);
    std::sort(left.begin(), left.end());
    std::sort(all.begin(), all.end());
    EXPECT_EQ(left, all);
}

TEST_P(ComponentTest, ClearTakesAnInstanceAlongWithItsComponent)
{
    Instance::create(0, component("placed"));
    Pool::getInstance()->clear();
    EXPECT_TRUE(tests::hierarchies().empty());
    EXPECT_TRUE(tests::currentSubPool().m_Names.empty());
}

TEST(ComponentNames, ThatClashTenThousandTimesAreNumberedInOrder)
{
    tests::ScopedPool const pool;
    for (int i = 0; i < 10000; ++i) {
        std::string const name = aPart("Door")->getName();
        EXPECT_EQ(name, i == 0 ? "Door" : "Door@" + std::to_string(i));
    }
}

TEST(ComponentTable, GoesOnWithUnitsNameLabelsAndInstances)
{
    EXPECT_EQ(tests::slotOf(&Component::getUnits), 8U);
    EXPECT_EQ(tests::slotOf(&Component::setUnits), 9U);
    EXPECT_EQ(tests::slotOf(&Component::getName), 10U);
    EXPECT_EQ(tests::slotOf(&Component::getFirstLabel), 11U);
    EXPECT_EQ(tests::slotOf(&Component::setFirstLabel), 12U);
    EXPECT_EQ(tests::slotOf(&Component::getSecondLabel), 13U);
    EXPECT_EQ(tests::slotOf(&Component::setSecondLabel), 14U);
    EXPECT_EQ(tests::slotOf(&Component::addInstance), 15U);
    EXPECT_EQ(tests::slotOf(&Component::removeInstance), 16U);
    EXPECT_EQ(tests::slotOf(&Component::forEachInstance), 17U);
}

} // namespace
} // namespace transl_tk
