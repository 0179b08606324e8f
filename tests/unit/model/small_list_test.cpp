#include "model/small_list.h"

#include <gtest/gtest.h>
#include <vector>

namespace transl_tk {
namespace {

using List = SmallList<int, 3>;

std::vector<int> contentOf(List const & list)
{
    return {list.begin(), list.end()};
}

TEST(SmallList, IsEmptyAtFirst)
{
    List const list;
    EXPECT_EQ(list.size(), 0U);
    EXPECT_EQ(list.begin(), list.end());
}

TEST(SmallList, KeepsTheOrderOfAddingBeyondItsOwnRoom)
{
    List list;
    std::vector<int> expected;
    for (int i = 0; i < 50; ++i) {
        list.add(i);
        expected.push_back(i);
        ASSERT_EQ(contentOf(list), expected);
        ASSERT_EQ(list[static_cast<std::size_t>(i)], i);
    }
}

TEST(SmallList, RemovesEveryMatchAndKeepsTheOrderOfTheRest)
{
    for (int const count : {3, 20}) {
        List list;
        std::vector<int> expected;
        for (int i = 0; i < count; ++i) {
            list.add(i);
            if (i % 2 == 1)
                expected.push_back(i);
        }
        list.removeIf([](int value) { return value % 2 == 0; });
        EXPECT_EQ(contentOf(list), expected);
        list.add(100);
        expected.push_back(100);
        EXPECT_EQ(contentOf(list), expected);
    }
}

TEST(SmallList, RoomThatWasMadeChangesNoContent)
{
    List list;
    for (int const value : {1, 2, 3})
        list.add(value);
    list.makeRoom();
    EXPECT_EQ(contentOf(list), (std::vector{1, 2, 3}));
    list.add(4);
    EXPECT_EQ(contentOf(list), (std::vector{1, 2, 3, 4}));
}

} // namespace
} // namespace transl_tk
