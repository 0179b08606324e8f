#include "model/block_pool.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <vector>

namespace transl_tk {
namespace {

TEST(BlockPool, GivesEveryBlockToOneOwner)
{
    BlockPool pool(48);
    std::mt19937 random(3);
    std::vector<unsigned char *> blocks;
    std::vector<unsigned char> marks;
    for (int round = 0; round < 20000; ++round) {
        if (blocks.empty() || random() % 5 < 3) {
            auto * const block = static_cast<unsigned char *>(pool.allocate());
            auto const mark = static_cast<unsigned char>(random());
            std::memset(block, mark, 48);
            blocks.push_back(block);
            marks.push_back(mark);
        } else {
            std::size_t const i = random() % blocks.size();
            ASSERT_TRUE(std::all_of(blocks[i], blocks[i] + 48,
                                    [&](unsigned char byte) { return byte == marks[i]; }));
            pool.release(blocks[i]);
            blocks.erase(blocks.begin() + static_cast<std::ptrdiff_t>(i));
            marks.erase(marks.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }
    for (unsigned char * const block : blocks)
        pool.release(block);
}

TEST(BlockPool, BlocksAreDistinctAndAligned)
{
    BlockPool pool(24);
    std::set<void *> blocks;
    for (int i = 0; i < 5000; ++i) {
        void * const block = pool.allocate();
        ASSERT_TRUE(blocks.insert(block).second);
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(double), 0U);
    }
    for (void * const block : blocks)
        pool.release(block);
}

} // namespace
} // namespace transl_tk
