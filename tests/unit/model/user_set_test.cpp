#include "model/user_set.h"
#include "support/models.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace transl_tk {
namespace {

class Thing : public Base
{
public:
    explicit Thing(int id) : Base(id) {}
    ~Thing() override = default;
    int getEntityKind() override { return 0; }
};

class UsersTest : public testing::Test
{
protected:
    void TearDown() override { forgetUsers(m_Store); }

    EntityStore m_Store;
    Thing m_Carrier{7};
    Thing m_First{1};
    Thing m_Second{2};
};

TEST_F(UsersTest, ANullCarrierHasNoUsers)
{
    addUser(m_Store, nullptr, &m_First);
    EXPECT_EQ(m_Store.m_Users.size(), 0U);
    EXPECT_FALSE(removeUser(m_Store, nullptr, &m_First));
}

TEST_F(UsersTest, ACarrierThatNeverHadAUserIsUnused)
{
    EXPECT_TRUE(removeUser(m_Store, &m_Carrier, &m_First));
    EXPECT_EQ(m_Store.m_Users.size(), 0U);
}

TEST_F(UsersTest, TheLastUserToGoLeavesTheCarrierUnused)
{
    addUser(m_Store, &m_Carrier, &m_First);
    addUser(m_Store, &m_Carrier, &m_Second);
    EXPECT_FALSE(removeUser(m_Store, &m_Carrier, &m_First));
    EXPECT_TRUE(removeUser(m_Store, &m_Carrier, &m_Second));
}

TEST_F(UsersTest, ARemovalTakesEveryOccurrenceOfTheUser)
{
    addUser(m_Store, &m_Carrier, &m_First);
    addUser(m_Store, &m_Carrier, &m_First);
    EXPECT_TRUE(removeUser(m_Store, &m_Carrier, &m_First));
}

TEST_F(UsersTest, TheEntryOfACarrierStaysWhenItsUsersHaveGone)
{
    addUser(m_Store, &m_Carrier, &m_First);
    removeUser(m_Store, &m_Carrier, &m_First);
    EXPECT_EQ(m_Store.m_Users.size(), 1U);
    EXPECT_TRUE(removeUser(m_Store, &m_Carrier, &m_Second));
}

TEST_F(UsersTest, RemovingAStrangerLeavesTheUsers)
{
    addUser(m_Store, &m_Carrier, &m_First);
    EXPECT_FALSE(removeUser(m_Store, &m_Carrier, &m_Second));
}

TEST_F(UsersTest, ManyUsersAreCountedLikeFew)
{
    std::vector<std::unique_ptr<Thing>> users;
    for (int i = 0; i < 100; ++i) {
        users.push_back(std::make_unique<Thing>(i));
        addUser(m_Store, &m_Carrier, users.back().get());
        addUser(m_Store, &m_Carrier, users.back().get());
    }
    for (int i = 0; i < 99; ++i)
        ASSERT_FALSE(removeUser(m_Store, &m_Carrier, users[static_cast<unsigned>(i)].get()));
    EXPECT_TRUE(removeUser(m_Store, &m_Carrier, users[99].get()));
}

TEST_F(UsersTest, RemovingAStrangerFromManyLeavesThem)
{
    std::vector<std::unique_ptr<Thing>> users;
    for (int i = 0; i < 5; ++i) {
        users.push_back(std::make_unique<Thing>(i));
        addUser(m_Store, &m_Carrier, users.back().get());
    }
    EXPECT_FALSE(removeUser(m_Store, &m_Carrier, &m_First));
    for (std::size_t i = 5; i-- > 1;)
        ASSERT_FALSE(removeUser(m_Store, &m_Carrier, users[i].get()));
    EXPECT_TRUE(removeUser(m_Store, &m_Carrier, users[0].get()));
    EXPECT_TRUE(removeUser(m_Store, &m_Carrier, &m_First));
}

TEST_F(UsersTest, SomeOccurrencesAmongOthersGoAtOnce)
{
    for (Thing * const user : {&m_First, &m_Second, &m_First, &m_Second, &m_First, &m_First})
        addUser(m_Store, &m_Carrier, user);
    EXPECT_FALSE(removeUser(m_Store, &m_Carrier, &m_First));
    EXPECT_TRUE(removeUser(m_Store, &m_Carrier, &m_Second));
}

TEST_F(UsersTest, CarriersOfDifferentIdsHaveTheirOwnUsers)
{
    Thing other{-7};
    addUser(m_Store, &m_Carrier, &m_First);
    addUser(m_Store, &other, &m_Second);
    EXPECT_EQ(m_Store.m_Users.size(), 2U);
    EXPECT_TRUE(removeUser(m_Store, &other, &m_Second));
    EXPECT_TRUE(removeUser(m_Store, &m_Carrier, &m_First));
}

TEST_F(UsersTest, ANewCarrierOfTheIdStartsWithoutUsersAndInAGenerationOfItsOwn)
{
    for (int count : {1, 5}) {
        SCOPED_TRACE(count);
        std::uint32_t before = 0;
        for (int i = 0; i < count; ++i)
            before = addUser(m_Store, &m_Carrier, &m_First);
        startUnused(m_Store, 7);
        EXPECT_TRUE(usersOf(m_Store, 7)->empty());
        EXPECT_EQ(m_Store.m_Users.size(), 1U);
        EXPECT_NE(addUser(m_Store, &m_Carrier, &m_Second), before);
        EXPECT_TRUE(removeUser(m_Store, &m_Carrier, &m_Second));
    }
}

TEST_F(UsersTest, ANewCarrierOfAnIdThatNeverHadUsersGetsNoEntry)
{
    addUser(m_Store, &m_Carrier, &m_First);
    for (int const id : {6, 8, -1})
        startUnused(m_Store, id);
    EXPECT_EQ(m_Store.m_Users.size(), 1U);
    EXPECT_EQ(usersOf(m_Store, 6), nullptr);
    EXPECT_FALSE(usersOf(m_Store, 7)->empty());
}

TEST_F(UsersTest, AreForgottenAllAtOnce)
{
    addUser(m_Store, &m_Carrier, &m_First);
    forgetUsers(m_Store);
    EXPECT_EQ(m_Store.m_Users.size(), 0U);
    EXPECT_EQ(usersOf(m_Store, 7), nullptr);
}

} // namespace
} // namespace transl_tk
