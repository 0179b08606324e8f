#include "topology/projected_box.h"

#include <cmath>
#include <gtest/gtest.h>
#include <set>

namespace transl_tk {
namespace {

void expectNear(std::vector<double> const & actual, std::vector<double> const & expected)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(actual[i], expected[i], 1e-13) << "node " << i;
}

TEST(SampleAxis, PlacesTenNodesOnASphere)
{
    expectNear(sampleAxis({3, 3, 3}, 0, 10),
               {0, 0.7981969530294788, 1.4899788744567843, 2.1171539543957243, 2.709406538748743,
                3.290593461251257, 3.8828460456042757, 4.510021125543216, 5.201803046970522, 6});
}

TEST(SampleAxis, PlacesThemAtEqualAnglesButForItsFineSteps)
{
    double const half = std::atan(std::sqrt(0.5)); // of the arc that an edge covers
    std::vector<double> const nodes = sampleAxis({3, 3, 3}, 2, 10);
    for (std::size_t i = 0; i < nodes.size(); ++i)
        EXPECT_NEAR(std::atan((nodes[i] - 3) / std::sqrt(18)),
                    half * (2 * static_cast<double>(i) / 9 - 1), 1e-5);
}

TEST(SampleAxis, TakesEachAxisWithItsOwnRadius)
{
    expectNear(sampleAxis({2, 3, 5}, 0, 10),
               {0, 0.43000782710662644, 0.8683461781336802, 1.315930057154523, 1.7710042567966278,
                2.228995743203372, 2.6840699428454773, 3.13165382186632, 3.5699921728933734, 4});
    expectNear(sampleAxis({2, 3, 5}, 1, 10),
               {0, 0.7049465285728885, 1.3781820109564646, 2.032905645765954, 2.678518636654868,
                3.321481363345132, 3.967094354234046, 4.621817989043535, 5.295053471427112, 6});
    expectNear(sampleAxis({2, 3, 5}, 2, 10),
               {0, 1.9345372811021566, 3.082217761964285, 3.931629534756748, 4.65571426623531,
                5.34428573376469, 6.068370465243252, 6.917782238035715, 8.065462718897843, 10});
}

TEST(SampleAxis, PutsTheMiddleOneOfAnOddNumberAtTheRadius)
{
    expectNear(sampleAxis({1, 1, 1}, 0, 9),
               {0, 0.29649107121292634, 0.5505070673495521, 0.7806607910383718, 1,
                1.2193392089616282, 1.4494929326504478, 1.7035089287870737, 2});
}

TEST(SampleAxis, StaysWithinItsNodesOnAnEdgeWithoutLength)
{
    EXPECT_EQ(sampleAxis({0, 0, 0}, 1, 10), std::vector<double>(10));
    EXPECT_EQ(sampleAxis({1e-300, 1e-300, 1e-300}, 1, 10).size(), 10U);
}

TEST(SurfaceNodeIndex, CountsTheFirstLayerInRows)
{
    GridSize const size = {4, 3, 5};
    EXPECT_EQ(surfaceNodeIndex({0, 0, 0}, size), 0);
    EXPECT_EQ(surfaceNodeIndex({3, 0, 0}, size), 3);
    EXPECT_EQ(surfaceNodeIndex({0, 1, 0}, size), 4);
    EXPECT_EQ(surfaceNodeIndex({1, 1, 0}, size), 5);
    EXPECT_EQ(surfaceNodeIndex({3, 2, 0}, size), 11);
}

TEST(SurfaceNodeIndex, WalksRoundTheLayersBetween)
{
    GridSize const size = {4, 3, 5};
    GridNode const ring[] = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {3, 1, 0},
                             {3, 2, 0}, {2, 2, 0}, {1, 2, 0}, {0, 2, 0}, {0, 1, 0}};
    int next = 12;
    for (int k = 1; k <= 3; ++k)
        for (GridNode node : ring) {
            node[2] = k;
            EXPECT_EQ(surfaceNodeIndex(node, size), next++) << node[0] << node[1] << node[2];
        }
}

TEST(SurfaceNodeIndex, CountsTheLastLayerInRows)
{
    GridSize const size = {4, 3, 5};
    EXPECT_EQ(surfaceNodeIndex({0, 0, 4}, size), 42);
    EXPECT_EQ(surfaceNodeIndex({3, 0, 4}, size), 45);
    EXPECT_EQ(surfaceNodeIndex({1, 1, 4}, size), 47);
    EXPECT_EQ(surfaceNodeIndex({3, 2, 4}, size), 53);
}

TEST(SurfaceNodeIndex, GivesEveryNumberBelow488OnceInAGridOfTen)
{
    std::multiset<int> numbers;
    auto const isEnd = [](int place) { return place == 0 || place == 9; };
    for (int k = 0; k < 10; ++k)
        for (int j = 0; j < 10; ++j)
            for (int i = 0; i < 10; ++i)
                if (isEnd(i) || isEnd(j) || isEnd(k))
                    numbers.insert(surfaceNodeIndex({i, j, k}, {10, 10, 10}));
    std::multiset<int> expected;
    for (int number = 0; number < 488; ++number)
        expected.insert(number);
    EXPECT_EQ(numbers, expected);
}

/// A quad over the corners of a kite, from whose first to third corner it is `ac`.
SurfaceGrid kite(double ac, double bd)
{
    return {{{0, 0, 0}, {ac / 2, -bd / 2, 0}, {ac, 0, 0}, {ac / 2, bd / 2, 0}}, {{0, 1, 2, 3}}};
}

TEST(SplitQuads, PartsAQuadAlongItsShorterDiagonal)
{
    EXPECT_EQ(splitQuads(kite(2, 3)), (std::vector<int>{0, 1, 2, 0, 2, 3}));
    EXPECT_EQ(splitQuads(kite(3, 2)), (std::vector<int>{0, 1, 3, 1, 2, 3}));
}

TEST(SplitQuads, PartsAQuadFromItsSecondCornerOnATie)
{
    EXPECT_EQ(splitQuads(kite(2, 2)), (std::vector<int>{0, 1, 3, 1, 2, 3}));
}

TEST(SplitQuads, KeepsTheOrderOfQuads)
{
    SurfaceGrid grid = kite(2, 3);
    grid.quads.push_back({3, 2, 1, 0});
    EXPECT_EQ(splitQuads(grid), (std::vector<int>{0, 1, 2, 0, 2, 3, 3, 2, 0, 2, 1, 0}));
}

} // namespace
} // namespace transl_tk
