#include "support/models.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/reporting/logger.h>

#include <gtest/gtest.h>

namespace transl_tk {
namespace {

class PoolTest : public testing::Test
{
protected:
    void TearDown() override
    {
        while (Pool::hasInstance())
            Pool::destruct();
    }

    static Pool & pool() { return *Pool::getInstance(); }
};

std::size_t pointCount()
{
    return tests::points().size();
}

TEST_F(PoolTest, IsAbsentAtFirst)
{
    EXPECT_EQ(Pool::getInstance(), nullptr);
    EXPECT_FALSE(Pool::hasInstance());
    Pool::destruct();
    EXPECT_FALSE(Pool::hasInstance());
}

TEST_F(PoolTest, EachDestructEndsOneSubPool)
{
    Pool::construct("a");
    Pool * const first = Pool::getInstance();
    Pool::construct("b");
    EXPECT_EQ(Pool::getInstance(), first);
    EXPECT_EQ(pool().getCurrent(), "b");
    Pool::destruct();
    EXPECT_EQ(Pool::getInstance(), first);
    EXPECT_EQ(pool().getCurrent(), "a");
    EXPECT_FALSE(pool().searchSubPool("b"));
    Pool::destruct();
    EXPECT_FALSE(Pool::hasInstance());
}

TEST_F(PoolTest, ConstructTwiceEmptiesTheSubPool)
{
    Pool::construct("a");
    Point3D::create(0, 0, 0, 0);
    SubPool * const subPool = pool().currentSubPool();
    Pool::construct("a");
    EXPECT_EQ(pool().currentSubPool(), subPool);
    EXPECT_EQ(pointCount(), 0U);
}

TEST_F(PoolTest, NewWorkingSubPoolTellsWhetherItIsNew)
{
    Pool::construct("a");
    EXPECT_FALSE(pool().newWorkingSubPool("a").second);
    auto const [entry, isNew] = pool().newWorkingSubPool("b");
    EXPECT_TRUE(isNew);
    EXPECT_EQ(entry->first, "b");
    EXPECT_EQ(entry->second, pool().currentSubPool());
}

TEST_F(PoolTest, NewWorkingSubPoolEmptiesOneThatIsNotCurrent)
{
    Pool::construct("a");
    Point3D::create(1, 0, 0, 0);
    Pool::construct("b");
    Point3D::create(1, 1, 1, 1);
    EXPECT_FALSE(pool().newWorkingSubPool("a").second);
    EXPECT_EQ(pool().getCurrent(), "a");
    EXPECT_EQ(pointCount(), 0U);
    pool().setCurrent("b");
    EXPECT_EQ(tests::points(), (std::map<int, tests::Coordinates>{{1, {1, 1, 1}}}));
}

TEST_F(PoolTest, DeletingASubPoolThatIsNotCurrentTouchesNoOther)
{
    Pool::construct("a");
    Point3D::create(1, 1, 0, 0);
    Pool::construct("b");
    Point3D::create(1, 2, 0, 0);
    EXPECT_TRUE(pool().deleteSubPool("a"));
    EXPECT_EQ(pool().getCurrent(), "b");
    EXPECT_EQ(tests::points(), (std::map<int, tests::Coordinates>{{1, {2, 0, 0}}}));
    EXPECT_FALSE(pool().searchSubPool("a"));
}

TEST_F(PoolTest, DeletingTheCurrentSubPoolMakesTheFirstLeftCurrent)
{
    for (char const * const name : {"m", "B", "a", "\xC3\xA4", ""})
        Pool::construct(name);
    pool().setCurrent("m");
    EXPECT_TRUE(pool().deleteSubPool("m"));
    EXPECT_EQ(pool().getCurrent(), "");
    EXPECT_TRUE(pool().deleteSubPool(""));
    EXPECT_EQ(pool().getCurrent(), "B");
    EXPECT_TRUE(pool().deleteSubPool("B"));
    EXPECT_EQ(pool().getCurrent(), "a");
}

TEST_F(PoolTest, DeletingTheLastSubPoolLeavesDefaultAsTheName)
{
    Pool::construct("a");
    EXPECT_TRUE(pool().deleteSubPool("a"));
    EXPECT_EQ(pool().getCurrent(), "DEFAULT");
    EXPECT_FALSE(pool().searchSubPool("DEFAULT"));
    EXPECT_EQ(Point3D::create(1, 0, 0, 0), nullptr);
    EXPECT_TRUE(pool().newWorkingSubPool("DEFAULT").second);
    EXPECT_NE(Point3D::create(1, 0, 0, 0), nullptr);
}

TEST_F(PoolTest, UnknownNamesAnswerFalseAndChangeNothing)
{
    Pool::construct("a");
    EXPECT_FALSE(pool().setCurrent("b"));
    EXPECT_FALSE(pool().searchSubPool("A"));
    EXPECT_FALSE(pool().deleteSubPool("b"));
    EXPECT_EQ(pool().getCurrent(), "a");
}

TEST_F(PoolTest, SwitchingChangesTheStoreOfEntities)
{
    Pool::construct("a");
    Point3D::create(0, 0, 0, 0);
    Pool::construct("b");
    EXPECT_EQ(pointCount(), 0U);
    EXPECT_TRUE(pool().setCurrent("a"));
    EXPECT_EQ(pointCount(), 1U);
}

TEST_F(PoolTest, EachSubPoolHasItsOwnLog)
{
    Pool::construct("a");
    cad::ILoggerPolicy * const first = pool().logger();
    EXPECT_NE(dynamic_cast<Logger *>(first), nullptr);
    EXPECT_EQ(pool().currentSubPool()->_logger(), first);
    Pool::construct("b");
    EXPECT_NE(pool().logger(), first);
}

TEST_F(PoolTest, InactiveLoggerTakesTheLogsPlaceEachTime)
{
    Pool::construct("a");
    pool().inactiveLogger();
    EXPECT_NE(dynamic_cast<cad::LoggerInactive *>(pool().logger()), nullptr);
    pool().inactiveLogger();
    EXPECT_NE(dynamic_cast<cad::LoggerInactive *>(pool().logger()), nullptr);
    pool().logger()->addEntry("swallowed", 1, cad::ILoggerPolicy::ErrorLine, true);
    EXPECT_FALSE(pool().logger()->hasEntryError(1));
}

TEST_F(PoolTest, AvailableIdsCountUpOverTheLifeOfTheProcess)
{
    EXPECT_EQ(SubPool::GetAvailableId(), 0U);
    Pool::construct("a");
    EXPECT_EQ(SubPool::GetAvailableId(), 1U);
    Pool::construct("b");
    Pool::destruct();
    Pool::destruct();
    EXPECT_EQ(SubPool::GetAvailableId(), 2U);
    EXPECT_EQ(SubPool::m_AvailableId, 3U);
}

TEST_F(PoolTest, EveryEntityGoesWithItsSubPool)
{
    Pool::construct("a");
    for (int i = 0; i < 1000; ++i)
        Point3D::create(0, 0, 0, 0);
    Pool::destruct();
    EXPECT_FALSE(Pool::hasInstance());
}

TEST_F(PoolTest, DeletedWithSeveralSubPoolsFreesEachModelInItsOwn)
{
    for (char const * const name : {"a", "b", "c"}) {
        Pool::construct(name);
        Point3D::create(0, 1, 2, 3);
    }
    Pool::getInstance()->setCurrent("a");
    delete Pool::getInstance();
    EXPECT_FALSE(Pool::hasInstance());
}

} // namespace
} // namespace transl_tk
