#include "model/id_tree.h"

#include <climits>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <vector>

namespace transl_tk {
namespace {

/// A pattern of ids, as models may have them.
struct Pattern
{
    char const * name;
    int (*id)(unsigned index, std::mt19937 & random);
};

std::ostream & operator<<(std::ostream & out, Pattern const & pattern)
{
    return out << pattern.name;
}

int number(unsigned index)
{
    return static_cast<int>(index);
}

Pattern const Patterns[] = {
    {"dense", [](unsigned i, std::mt19937 &) { return number(i) + 1; }},
    {"descending", [](unsigned i, std::mt19937 &) { return 100000 - number(i); }},
    {"negative", [](unsigned i, std::mt19937 &) { return -number(i) - 1; }},
    {"around zero", [](unsigned i, std::mt19937 &) { return number(i) - 1500; }},
    {"strided",
     [](unsigned i, std::mt19937 &) { return static_cast<int>(INT_MIN + i % 4294 * 1000000LL); }},
    {"random", [](unsigned, std::mt19937 & random) { return static_cast<int>(random()); }},
    {"edges of pages",
     [](unsigned i, std::mt19937 &) { return number(i / 3) * 256 - 1 + number(i % 3); }},
    {"largest numbers", [](unsigned i, std::mt19937 &) { return INT_MAX - number(i); }},
    {"smallest numbers", [](unsigned i, std::mt19937 &) { return INT_MIN + number(i); }},
};

class IdTreePattern : public testing::TestWithParam<Pattern>
{
protected:
    static void * valueOf(int id) { return &s_Objects[static_cast<unsigned>(id) % 4096]; }

    /// Enters ids of the pattern into a tree and an ordered map alike.
    static void fill(IdTree & tree, std::map<int, void *> & expected, unsigned count,
                     std::mt19937 random)
    {
        for (unsigned i = 0; i < count; ++i) {
            int const id = GetParam().id(i, random);
            expected.emplace(id, valueOf(id));
            tree.insert(id, valueOf(id));
        }
    }

    void expectSame(IdTree const & tree, std::map<int, void *> const & expected)
    {
        ASSERT_EQ(tree.size(), expected.size());
        std::vector<std::pair<int, void *>> walked;
        tree.walk(
            [](void * context, int id, void * value) {
                static_cast<decltype(walked) *>(context)->emplace_back(id, value);
            },
            &walked);
        ASSERT_EQ(walked, (decltype(walked)(expected.begin(), expected.end())));
        if (!expected.empty()) {
            ASSERT_EQ(tree.largest(), expected.rbegin()->first);
        }
    }

private:
    inline static char s_Objects[4096];
};

TEST_P(IdTreePattern, FindsAndWalksWhatAnOrderedMapHolds)
{
    std::mt19937 random(7);
    IdTree tree;
    std::map<int, void *> expected;
    for (unsigned i = 0; i < 3000; ++i) {
        int const id = GetParam().id(i, random);
        bool const isNew = expected.emplace(id, valueOf(id)).second;
        void ** const slot = tree.insert(id, valueOf(id));
        ASSERT_EQ(slot != nullptr, isNew) << id;
        if (slot != nullptr) {
            ASSERT_EQ(*slot, valueOf(id));
        }
    }
    expectSame(tree, expected);
    for (auto const & [id, value] : expected)
        ASSERT_EQ(tree.find(id), value) << id;
    for (unsigned i = 0; i < 3000; ++i) {
        int const id = static_cast<int>(random());
        auto const entry = expected.find(id);
        ASSERT_EQ(tree.find(id), entry != expected.end() ? entry->second : nullptr) << id;
    }
}

TEST_P(IdTreePattern, FindsTheNeighboursOfAnyId)
{
    IdTree tree;
    std::map<int, void *> expected;
    fill(tree, expected, 3000, std::mt19937(8));
    std::vector<int> probes = {INT_MIN, INT_MAX, 0, -1, 1};
    for (auto const & [id, value] : expected) {
        probes.push_back(id);
        probes.push_back(static_cast<int>(static_cast<unsigned>(id) + 1U));
        probes.push_back(static_cast<int>(static_cast<unsigned>(id) - 1U));
    }
    for (int const probe : probes) {
        auto const above = expected.lower_bound(probe);
        auto const after = tree.atOrAfter(probe);
        ASSERT_EQ(after.second != nullptr, above != expected.end()) << probe;
        if (above != expected.end()) {
            ASSERT_EQ(after.first, above->first) << probe;
            ASSERT_EQ(after.second, above->second) << probe;
        }
        auto const beyond = expected.upper_bound(probe);
        auto const before = tree.atOrBefore(probe);
        ASSERT_EQ(before.second != nullptr, beyond != expected.begin()) << probe;
        if (beyond != expected.begin()) {
            ASSERT_EQ(before.first, std::prev(beyond)->first) << probe;
        }
    }
}

TEST_P(IdTreePattern, CopiesItsEntriesInBatches)
{
    IdTree tree;
    std::map<int, void *> expected;
    fill(tree, expected, 3000, std::mt19937(12));
    std::vector<std::pair<int, void *>> copied;
    IdTree::Entry batch[77];
    for (long long next = INT_MIN; next <= INT_MAX;) {
        std::size_t const count = tree.copyFrom(static_cast<int>(next), batch, 77);
        for (std::size_t i = 0; i < count; ++i)
            copied.emplace_back(batch[i].id, batch[i].value);
        next = count == 77 ? batch[76].id + 1LL : INT_MAX + 1LL;
    }
    EXPECT_EQ(copied, (decltype(copied)(expected.begin(), expected.end())));
}

TEST_P(IdTreePattern, StaysRightWhileEntriesComeAndGo)
{
    std::mt19937 random(9);
    IdTree tree;
    std::map<int, void *> expected;
    std::vector<int> ids;
    for (unsigned i = 0; i < 1500; ++i)
        ids.push_back(GetParam().id(i, random));
    for (int round = 0; round < 20000; ++round) {
        int const id = ids[random() % ids.size()];
        // Twice as many go as come in the second half, so that nodes empty again.
        if (random() % 3 < (round < 10000 ? 2U : 1U)) {
            ASSERT_EQ(tree.insert(id, valueOf(id)) != nullptr,
                      expected.emplace(id, valueOf(id)).second);
        } else {
            ASSERT_EQ(tree.erase(id) != nullptr, expected.erase(id) != 0) << id;
        }
        ASSERT_EQ(tree.size(), expected.size());
        if (!expected.empty()) {
            ASSERT_EQ(tree.largest(), expected.rbegin()->first);
        }
    }
    expectSame(tree, expected);
    for (int const id : ids)
        tree.erase(id);
    EXPECT_EQ(tree.size(), 0U);
    EXPECT_EQ(tree.memory(), 0U);
}

TEST_P(IdTreePattern, ACopyIsATreeOfItsOwn)
{
    IdTree tree;
    std::map<int, void *> expected;
    fill(tree, expected, 1000, std::mt19937(10));
    IdTree const copy(tree);
    for (auto const & [id, value] : expected)
        tree.erase(id);
    expectSame(copy, expected);
}

INSTANTIATE_TEST_SUITE_P(Ids, IdTreePattern, testing::ValuesIn(Patterns), [](auto const & pattern) {
    std::string name = pattern.param.name;
    for (char & c : name)
        if (c == ' ')
            c = '_';
    return name;
});

TEST(IdTree, TakesAtMostTwelveBytesForADenseId)
{
    IdTree tree;
    for (int id = 1; id <= 100000; ++id)
        tree.insert(id, &tree);
    EXPECT_LE(tree.memory(), 12U * tree.size());
}

TEST(IdTree, GivesMemoryBackWhenIdsBecomeSparse)
{
    IdTree tree;
    for (int id = 0; id < 100000; ++id)
        tree.insert(id, &tree);
    for (int id = 0; id < 100000; ++id)
        if (id % 1000 != 0)
            tree.erase(id);
    EXPECT_LE(tree.memory(), 64U * tree.size());
}

} // namespace
} // namespace transl_tk
