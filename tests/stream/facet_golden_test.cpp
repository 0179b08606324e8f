#include "stream/topology_stream.h"

#include <limits>

namespace transl_tk {
namespace {

using namespace tests;

constexpr float Corners[6] = {1.5F, 2, 3, -4, 5, 6};
constexpr unsigned char Colours[6] = {255, 0, 1, 2, 3, 254};
constexpr float Normals[3] = {0, 0, -1};
constexpr int Indices[4] = {0, 1, 1, -7};

class GoldenFacets : public TopologyStream
{
protected:
    /// What a mesh has in its arrays, and its counts as they stand.
    struct Data
    {
        float * vertices = nullptr;
        unsigned char * colours = nullptr;
        int vertexCount = 0;
        float * normals = nullptr;
        int normalCount = 0;
        int * indices = nullptr;
        int indexCount = 0;
    };

    static Data dataOf(int id)
    {
        Data data;
        strip(id)->getData(data.vertices, data.colours, data.vertexCount, data.normals,
                           data.normalCount, data.indices, data.indexCount);
        return data;
    }

    /// The fields up to the vertices.
    static ByteString start(int id, bool flag)
    {
        return ByteString().i32(id).u8(flag).i32(2).raw(records::f32({1.5F, 2, 3, -4, 5, 6}));
    }

    static Bytes model(std::vector<ByteString> const & strips)
    {
        return records::model({{Facets, strips}});
    }
};

TEST_F(GoldenFacets, AStripWithEverythingIsFlagVerticesColoursNormalsIndices)
{
    TriStrip::create(3, Corners, Colours, 2, Normals, 1, Indices, 4, true);
    ByteString record;
    record.i32(3).u8(1);
    record.i32(2).i32(0x3FC00000).i32(0x40000000).i32(0x40400000);
    record.i32(static_cast<int>(0xC0800000)).i32(0x40A00000).i32(0x40C00000);
    record.i32(2).u8(255).u8(0).u8(1).u8(2).u8(3).u8(254);
    record.i32(1).i32(0).i32(0).i32(static_cast<int>(0xBF800000));
    record.i32(4).i32(0).i32(1).i32(1).i32(-7);
    EXPECT_EQ(record.bytes().size(), 13U + 12U * 2U + 3U * 2U + 4U * (4U + 2U + 3U));
    expectTravelsAs(model({record}));
    Data const data = dataOf(3);
    EXPECT_TRUE(strip(3)->getStripFlag());
    EXPECT_EQ(std::vector(data.vertices, data.vertices + 6),
              std::vector(std::begin(Corners), std::end(Corners)));
    EXPECT_EQ(std::vector(data.colours, data.colours + 6),
              std::vector(std::begin(Colours), std::end(Colours)));
    EXPECT_EQ(std::vector(data.normals, data.normals + 3),
              std::vector(std::begin(Normals), std::end(Normals)));
    EXPECT_EQ(std::vector(data.indices, data.indices + 4),
              std::vector(std::begin(Indices), std::end(Indices)));
    EXPECT_EQ(data.vertexCount, 2);
    EXPECT_EQ(data.normalCount, 1);
    EXPECT_EQ(data.indexCount, 4);
}

TEST_F(GoldenFacets, AStripWithoutColoursHasACountOfZeroAndNoColourBytes)
{
    TriStrip::create(3, Corners, nullptr, 2, Normals, 1, Indices, 4, false);
    ByteString record = start(3, false);
    record.i32(0);
    record.i32(1).raw(records::f32({0, 0, -1})).i32(4).i32(0).i32(1).i32(1).i32(-7);
    EXPECT_EQ(record.bytes().size(), 13U + 12U * 2U + 4U * (4U + 2U + 3U));
    expectTravelsAs(model({record}));
    EXPECT_EQ(dataOf(3).colours, nullptr);
    EXPECT_FALSE(strip(3)->getStripFlag());
}

TEST_F(GoldenFacets, AStripWithVerticesAloneHasNullArrays)
{
    TriStrip::create(3, Corners, nullptr, 2, nullptr, 0, nullptr, 0, false);
    expectTravelsAs(model({start(3, false).i32(0).i32(0).i32(0)}));
    EXPECT_EQ(dataOf(3).colours, nullptr);
    EXPECT_EQ(dataOf(3).normals, nullptr);
    EXPECT_EQ(dataOf(3).indices, nullptr);
}

TEST_F(GoldenFacets, EachArrayMayBeThereAlone)
{
    TriStrip::create(1, Corners, Colours, 2, nullptr, 0, nullptr, 0, false);
    TriStrip::create(2, Corners, nullptr, 2, Normals, 1, nullptr, 0, false);
    TriStrip::create(3, Corners, nullptr, 2, nullptr, 0, Indices, 1, false);
    ByteString const colours = ByteString().u8(255).u8(0).u8(1).u8(2).u8(3).u8(254);
    expectTravelsAs(model({start(1, false).i32(2).raw(colours).i32(0).i32(0),
                           start(2, false).i32(0).i32(1).raw(records::f32({0, 0, -1})).i32(0),
                           start(3, false).i32(0).i32(0).i32(1).i32(0)}));
}

TEST_F(GoldenFacets, CountsWithoutArraysAndNegativeCountsAreWrittenAsZero)
{
    TriStrip::create(1, Corners, nullptr, 2, nullptr, 5, nullptr, 7, false);
    TriStrip::create(2, Corners, nullptr, 2, Normals, -5, Indices, -7, false);
    TriStrip::create(3, Corners, nullptr, 2, nullptr, -5, nullptr, -7, false);
    constexpr int Least = std::numeric_limits<int>::min();
    TriStrip::create(4, Corners, nullptr, 2, Normals, Least, Indices, Least, false);
    EXPECT_EQ(dataOf(1).normalCount, 5);
    EXPECT_EQ(dataOf(2).indexCount, -7);
    std::vector<ByteString> records;
    for (int id = 1; id <= 4; ++id)
        records.push_back(start(id, false).i32(0).i32(0).i32(0));
    expectTravelsAs(model(records));
    EXPECT_EQ(dataOf(1).normalCount, 0);
    EXPECT_EQ(dataOf(2).indexCount, 0);
}

TEST_F(GoldenFacets, AStripWithoutVerticesIsWrittenWithACountOfZeroAndMakesNothing)
{
    double const centre[3] = {0, 0, 0};
    unsigned char const colour[3] = {1, 2, 3};
    TriStrip::create(1, centre, 1.0, colour, static_cast<TriStrip::Type>(9), true);
    TriStrip::create(2, Corners, nullptr, 2, nullptr, 0, nullptr, 0, false);
    ByteString empty;
    empty.i32(1).u8(1).i32(0).i32(0).i32(0).i32(0);
    ByteString const whole = start(2, false).i32(0).i32(0).i32(0);
    expectWrittenAs(model({empty, whole}));
    currentSubPool().clear();
    read(model({empty, whole}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(strip(1), nullptr);
    expectWrittenAs(model({whole}));
}

TEST_F(GoldenFacets, AStripWithoutVerticesMayStillHaveOtherArraysThatAreReadAndDropped)
{
    ByteString odd;
    odd.i32(1).u8(1).i32(-3).i32(9).i32(1).raw(records::f32({0, 0, -1})).i32(1).i32(4);
    ByteString const whole = start(2, false).i32(0).i32(0).i32(0);
    read(model({odd, whole}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(model({whole}));
}

TEST_F(GoldenFacets, TheCountOfColoursOnlySaysWhetherTheyAreThere)
{
    ByteString const colours = ByteString().u8(255).u8(0).u8(1).u8(2).u8(3).u8(254);
    read(model({start(1, false).i32(1).raw(colours).i32(0).i32(0),
                start(2, false).i32(6).raw(colours).i32(0).i32(0),
                start(3, false).i32(-2).i32(0).i32(0)}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(model({start(1, false).i32(2).raw(colours).i32(0).i32(0),
                           start(2, false).i32(2).raw(colours).i32(0).i32(0),
                           start(3, false).i32(0).i32(0).i32(0)}));
}

TEST_F(GoldenFacets, ACountOfColoursThatNoStreamCouldHoldIsStillOnlyASign)
{
    ByteString const colours = ByteString().u8(255).u8(0).u8(1).u8(2).u8(3).u8(254);
    read(model({start(1, false).i32(0x7FFFFFFF).raw(colours).i32(0).i32(0)}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(model({start(1, false).i32(2).raw(colours).i32(0).i32(0)}));
}

TEST_F(GoldenFacets, ASphereArrivesWithTheValuesItWasMadeWith)
{
    double const centre[3] = {1, 2, 3};
    unsigned char const colour[3] = {1, 2, 3};
    TriStrip::create(1, centre, 2.5, colour, TriStrip::ProjectedBox, true);
    Data const made = dataOf(1);
    ByteString record;
    record.i32(1).u8(1).i32(made.vertexCount);
    record.raw(records::f32({made.vertices, made.vertices + 3L * made.vertexCount}));
    record.i32(made.vertexCount);
    for (int i = 0; i < 3 * made.vertexCount; ++i)
        record.u8(made.colours[i]);
    record.i32(made.normalCount);
    record.raw(records::f32({made.normals, made.normals + 3L * made.normalCount}));
    record.raw(records::ids({made.indices, made.indices + made.indexCount}));
    ASSERT_GT(made.indexCount, 0);
    expectTravelsAs(model({record}));
}

TEST_F(GoldenFacets, BitsOfFloatsArriveAsTheyWere)
{
    float const odd[3] = {std::bit_cast<float>(0x7FA00001), -0.0F, std::bit_cast<float>(1)};
    TriStrip::create(1, odd, nullptr, 1, odd, 1, nullptr, 0, false);
    ByteString record;
    ByteString const bits = ByteString().i32(0x7FA00001).i32(static_cast<int>(1U << 31)).i32(1);
    record.i32(1).u8(0).i32(1).raw(bits).i32(0).i32(1).raw(bits).i32(0);
    expectTravelsAs(model({record}));
}

} // namespace
} // namespace transl_tk
