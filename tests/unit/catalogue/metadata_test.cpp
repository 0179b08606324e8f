#include "catalogue/metadata.h"

#include <keld-transl/model/pool.h>

#include <gtest/gtest.h>

namespace {

using keld::counterKey;
using keld::counterName;
using keld::Metadata;
using transl_tk::Attribute;
using transl_tk::Pool;

TEST(CounterNames, AreThese)
{
    constexpr std::pair<int, char const *> Names[] = {
        {0, "attributes of type 12"},
        {2, "general attributes"},
        {3, "annotations"},
        {4, "attributes of type 11"},
        {8, "attributes of type 5"},
        {9, "attributes of type 7"},
        {21, "hole features"},
        {22, "blend features"},
        {70, "faces"},
        {71, "triangles"},
        {72, "assemblies"},
        {73, "parts"},
        {74, "instances"},
        {75, "instances of assemblies"},
        {76, "instances of parts"},
        {78, "spot welds"},
        {79, "attributes of type 10"},
        {84, "B-spline surfaces"},
        {85, "surfaces of type 1"},
        {86, "cones"},
        {87, "cylinders"},
        {88, "offset surfaces"},
        {89, "surfaces of revolution"},
        {90, "ruled surfaces"},
        {91, "surfaces of linear extrusion"},
        {92, "tori"},
        {93, "spheres"},
        {94, "planes"},
        {95, "surfaces of type 6"},
        {98, "circles"},
        {99, "lines"},
        {100, "line strips"},
        {102, "composite curves"},
        {103, "B-spline curves"},
        {104, "curves of type 4"},
        {105, "ellipses"},
        {19, "key 19"},
        {83, "key 83"},
        {-7, "key -7"},
    };
    for (auto const & [key, name] : Names) {
        EXPECT_EQ(name, counterName(key));
        EXPECT_EQ(key, counterKey(name)) << name;
    }
}

TEST(CounterNames, AreFoundInOtherSpellings)
{
    EXPECT_EQ(84, counterKey("b_SPLINE-Surfaces"));
    EXPECT_EQ(78, counterKey("spot-welds"));
    EXPECT_EQ(std::nullopt, counterKey("spotwelds"));
    EXPECT_EQ(std::nullopt, counterKey("face"));
    EXPECT_EQ(std::nullopt, counterKey(""));
    EXPECT_EQ(std::nullopt, counterKey("key "));
    EXPECT_EQ(std::nullopt, counterKey("key 99999999999"));
}

TEST(NamedCounters, StandInTheOrderForReaders)
{
    Metadata const metadata{{{1000, 1}, {70, 2}, {-1, 3}, {72, 0}, {99, 4}}, {}, ""};
    std::vector<std::pair<std::string, int>> const expected = {
        {"assemblies", 0}, {"faces", 2}, {"lines", 4}, {"key -1", 3}, {"key 1000", 1}};
    EXPECT_EQ(expected, namedCounters(metadata));
}

class ReadMetadata : public testing::Test
{
protected:
    ReadMetadata() { Pool::construct("model"); }
    ~ReadMetadata() override { Pool::destruct(); }
};

TEST_F(ReadMetadata, TakesAllThatADictionaryWrote)
{
    Attribute * const attribute = Attribute::create("", Attribute::Dictionary);
    for (int const value : {4, 70, 5, 1000, -1, 2})
        attribute->addValue(value);
    attribute->addValue("Hole");
    attribute->addValue(3);
    attribute->addValue("words,");
    Metadata const expected{{{70, 5}, {1000, -1}}, {{"Hole", 3}}, "words,"};
    EXPECT_EQ(expected, keld::readMetadata(attribute));
}

TEST_F(ReadMetadata, TakesNothingElse)
{
    Attribute * const attribute = Attribute::create("", Attribute::Dictionary);
    attribute->addValue(0);
    attribute->addValue(0);
    EXPECT_EQ(std::nullopt, keld::readMetadata(attribute));
    EXPECT_EQ(std::nullopt, keld::readMetadata(nullptr));
}

} // namespace
