#include "model/entity.h"
#include "support/models.h"
#include "support/slots.h"
#include "topology/tri_strip_data.h"

#include <array>
#include <climits>
#include <gtest/gtest.h>
#include <vector>

namespace transl_tk {
namespace {

/// What `getData` gives, pointers and counts as they are.
struct Data
{
    float * vertices = nullptr;
    unsigned char * colours = nullptr;
    int vertexCount = 0;
    float * normals = nullptr;
    int normalCount = 0;
    int * indices = nullptr;
    int indexCount = 0;

    explicit Data(TriStrip * strip)
    {
        strip->getData(vertices, colours, vertexCount, normals, normalCount, indices, indexCount);
    }
};

template <class T> std::vector<T> row(T const * values, std::size_t count)
{
    return {values, values + count};
}

class TriStripTest : public testing::Test
{
protected:
    /// A strip of the vertices alone.
    TriStrip * bare(int id = 0)
    {
        return TriStrip::create(id, m_Vertices.data(), nullptr, 4, nullptr, 0, nullptr, 0, false);
    }
    /// A strip of all arrays.
    TriStrip * full(int id = 0, bool flag = false)
    {
        return TriStrip::create(id, m_Vertices.data(), m_Colours.data(), 4, m_Normals.data(), 2,
                                m_Indices.data(), 6, flag);
    }
    static EntityTable const & table() { return tests::currentSubPool().m_TriStrips.m_Entities; }

    std::vector<float> m_Vertices = {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0.5F};
    std::vector<unsigned char> m_Colours = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 255};
    std::vector<float> m_Normals = {0, 0, 1, 0, 0, -1};
    std::vector<int> m_Indices = {0, 1, 2, 1, 3, 2};
    tests::ScopedPool m_Pool;
};

constexpr unsigned char Red[] = {255, 0, 1};

TEST_F(TriStripTest, HoldsCopiesOfItsArrays)
{
    auto const [vertices, colours, normals, indices] =
        std::tuple(m_Vertices, m_Colours, m_Normals, m_Indices);
    TriStrip * const strip = full();
    m_Vertices.assign(12, -7);
    m_Colours.assign(12, 77);
    m_Normals.assign(6, -7);
    m_Indices.assign(6, -7);
    Data const data(strip);
    EXPECT_EQ(row(data.vertices, 12), vertices);
    EXPECT_EQ(row(data.colours, 12), colours);
    EXPECT_EQ(row(data.normals, 6), normals);
    EXPECT_EQ(row(data.indices, 6), indices);
    EXPECT_EQ(data.vertexCount, 4);
    EXPECT_EQ(data.normalCount, 2);
    EXPECT_EQ(data.indexCount, 6);
}

TEST_F(TriStripTest, GivesOutItsOwnArrays)
{
    TriStrip * const strip = full();
    Data(strip).vertices[2] = 42;
    EXPECT_EQ(Data(strip).vertices[2], 42);
    EXPECT_EQ(Data(strip).colours, Data(strip).colours);
}

TEST_F(TriStripTest, HasNoneOfTheArraysThatWereNull)
{
    Data const data(bare());
    EXPECT_EQ(row(data.vertices, 12), m_Vertices);
    EXPECT_EQ(data.colours, nullptr);
    EXPECT_EQ(data.normals, nullptr);
    EXPECT_EQ(data.indices, nullptr);
}

TEST_F(TriStripTest, IsNotMadeWithoutVerticesAndTakesNoId)
{
    auto const make = [&](float const * vertices, int count) {
        return TriStrip::create(3, vertices, m_Colours.data(), count, m_Normals.data(), 2,
                                m_Indices.data(), 6, true);
    };
    EXPECT_EQ(make(nullptr, 4), nullptr);
    EXPECT_EQ(make(m_Vertices.data(), 0), nullptr);
    EXPECT_EQ(make(m_Vertices.data(), -1), nullptr);
    EXPECT_TRUE(table().empty());
}

TEST_F(TriStripTest, KeepsNoNormalsOrIndicesWhoseCountIsZero)
{
    Data const data(TriStrip::create(0, m_Vertices.data(), nullptr, 4, m_Normals.data(), 0,
                                     m_Indices.data(), 0, false));
    EXPECT_EQ(data.normals, nullptr);
    EXPECT_EQ(data.normalCount, 0);
    EXPECT_EQ(data.indices, nullptr);
    EXPECT_EQ(data.indexCount, 0);
}

TEST_F(TriStripTest, KeepsNegativeCountsAndCopiesNothingForThem)
{
    Data const data(TriStrip::create(0, m_Vertices.data(), nullptr, 4, m_Normals.data(), INT_MIN,
                                     m_Indices.data(), -5, false));
    EXPECT_EQ(data.normalCount, INT_MIN);
    EXPECT_EQ(data.normals, nullptr);
    EXPECT_EQ(data.indexCount, -5);
    EXPECT_EQ(data.indices, nullptr);
}

TEST_F(TriStripTest, KeepsTheCountsOfArraysThatWereNull)
{
    Data const data(
        TriStrip::create(0, m_Vertices.data(), nullptr, 4, nullptr, 9, nullptr, 12, false));
    EXPECT_EQ(data.normalCount, 9);
    EXPECT_EQ(data.normals, nullptr);
    EXPECT_EQ(data.indexCount, 12);
    EXPECT_EQ(data.indices, nullptr);
}

TEST_F(TriStripTest, ContentCountsWhatIsThere)
{
    auto const counts = [](TriStrip * strip) {
        TriStripContent const content = contentOf(*strip);
        return std::array{content.vertexCount, content.colourCount, content.normalCount,
                          content.indexCount};
    };
    EXPECT_EQ(counts(full()), (std::array{4, 4, 2, 6}));
    EXPECT_EQ(
        counts(TriStrip::create(0, m_Vertices.data(), nullptr, 4, nullptr, 9, nullptr, 12, false)),
        (std::array{4, 0, 0, 0}));
    EXPECT_EQ(counts(TriStrip::create(0, m_Vertices.data(), m_Colours.data(), 4, m_Normals.data(),
                                      -1, m_Indices.data(), -1, false)),
              (std::array{4, 4, 0, 0}));
}

TEST_F(TriStripTest, ContentIsTheArraysThemselves)
{
    TriStrip * const strip = full();
    Data const data(strip);
    TriStripContent const content = contentOf(*strip);
    EXPECT_EQ(content.vertices, data.vertices);
    EXPECT_EQ(content.colours, data.colours);
    EXPECT_EQ(content.normals, data.normals);
    EXPECT_EQ(content.indices, data.indices);
}

TEST_F(TriStripTest, KeepsItsFlag)
{
    EXPECT_TRUE(full(0, true)->getStripFlag());
    EXPECT_FALSE(full(0, false)->getStripFlag());
}

TEST_F(TriStripTest, ColoursEveryVertexAnew)
{
    TriStrip * const strip = full();
    unsigned char const * const before = Data(strip).colours;
    strip->setColor(Red);
    EXPECT_EQ(Data(strip).colours, before);
    EXPECT_EQ(row(before, 12),
              (std::vector<unsigned char>{255, 0, 1, 255, 0, 1, 255, 0, 1, 255, 0, 1}));
}

TEST_F(TriStripTest, GetsColoursWhenItHadNone)
{
    TriStrip * const strip = bare();
    strip->setColor(Red);
    ASSERT_NE(Data(strip).colours, nullptr);
    EXPECT_EQ(row(Data(strip).colours, 12),
              (std::vector<unsigned char>{255, 0, 1, 255, 0, 1, 255, 0, 1, 255, 0, 1}));
}

TEST_F(TriStripTest, TakesTheNextIdOrTheOneThatIsGiven)
{
    EXPECT_EQ(bare()->getId(), 1);
    EXPECT_EQ(bare(9)->getId(), 9);
    EXPECT_EQ(full()->getId(), 10);
    EXPECT_EQ(bare(-4)->getId(), -4);
}

TEST_F(TriStripTest, IsNotMadeWhenItsIdIsTaken)
{
    TriStrip * const first = full(5);
    EXPECT_EQ(bare(5), nullptr);
    EXPECT_EQ(table().size(), 1U);
    EXPECT_EQ(table().lookup(5), first);
    EXPECT_EQ(Data(first).indexCount, 6);
}

TEST_F(TriStripTest, DoesNotReadTheArraysWhenItsIdIsTaken)
{
    bare(5);
    // To copy as many vertices would take more than there is.
    EXPECT_EQ(
        TriStrip::create(5, m_Vertices.data(), nullptr, INT_MAX, nullptr, 0, nullptr, 0, false),
        nullptr);
}

TEST_F(TriStripTest, StandsInItsStoreUntilItsEnd)
{
    TriStrip * const strip = full(5);
    EXPECT_EQ(table().lookup(5), strip);
    TriStrip::destruct(strip);
    EXPECT_TRUE(table().empty());
    TriStrip::destruct(nullptr);
}

TEST_F(TriStripTest, TakesOverArraysWithoutACopy)
{
    TriStripData data;
    data.vertices = geom::Array<float>(12);
    data.vertices.copyFrom(m_Vertices.data());
    data.normals = geom::Array<float>(6);
    data.normals.copyFrom(m_Normals.data());
    data.vertexCount = 4;
    data.normalCount = 2;
    data.flag = true;
    float const * const vertices = data.vertices.data();
    float const * const normals = data.normals.data();
    TriStrip * const strip = createTriStrip(7, std::move(data));
    ASSERT_NE(strip, nullptr);
    EXPECT_EQ(strip->getId(), 7);
    EXPECT_EQ(Data(strip).vertices, vertices);
    EXPECT_EQ(Data(strip).vertexCount, 4);
    EXPECT_EQ(Data(strip).normals, normals);
    EXPECT_EQ(Data(strip).normalCount, 2);
    EXPECT_EQ(Data(strip).colours, nullptr);
    EXPECT_EQ(Data(strip).indices, nullptr);
    EXPECT_TRUE(strip->getStripFlag());
}

TEST_F(TriStripTest, LeavesArraysUntouchedWhenItIsNotMadeOfThem)
{
    TriStripData data;
    data.vertices = geom::Array<float>(12);
    float const * const vertices = data.vertices.data();
    auto const make = [&data] { return createTriStrip(7, std::move(data)); };
    EXPECT_EQ(make(), nullptr); // without vertices, as the count has it
    EXPECT_TRUE(table().empty());
    bare(7);
    data.vertexCount = 4;
    EXPECT_EQ(make(), nullptr);
    EXPECT_EQ(data.vertices.data(), vertices);
    EXPECT_EQ(data.vertices.size(), 12U);
    EXPECT_EQ(data.vertexCount, 4);
}

TEST_F(TriStripTest, GoesWithTheModel)
{
    full(3);
    full(-2);
    Pool::getInstance()->clear();
    EXPECT_TRUE(table().empty());
}

/// A strip that tells of its end, and has indices but a negative count of them.
class ForeignStrip final : public TriStrip
{
public:
    ForeignStrip(int id, std::vector<char const *> & ends) : TriStrip(id), m_Ends(ends) {}
    ~ForeignStrip() override { m_Ends.push_back("strip"); }

    int getEntityKind() override { return EntityKindTriStrip; }
    void getData(float *&, unsigned char *&, int &, float *&, int &, int *& indices,
                 int & indexCount) override
    {
        indices = m_Indices;
        indexCount = -3;
    }
    bool getStripFlag() override { return false; }
    void setColor(unsigned char const (&)[3]) override {}

private:
    std::vector<char const *> & m_Ends;
    int m_Indices[3] = {0, 1, 2};
};

/// A point that tells of its end.
class TellingPoint final : public Point3D
{
public:
    TellingPoint(int id, std::vector<char const *> & ends) : Point3D(id), m_Ends(ends) {}
    ~TellingPoint() override { m_Ends.push_back("point"); }

    int getEntityKind() override { return EntityKindPoint3D; }
    void getCoordinates(double &, double &, double &) override {}

private:
    std::vector<char const *> & m_Ends;
};

TEST_F(TriStripTest, EndsBeforeThePointsWhenTheModelIsEmptied)
{
    std::vector<char const *> ends;
    createEntity<TellingPoint>(&SubPool::m_Points, 0, ends);
    createEntity<ForeignStrip>(&SubPool::m_TriStrips, 0, ends);
    Pool::getInstance()->clear();
    EXPECT_EQ(ends, (std::vector<char const *>{"strip", "point"}));
}

TEST_F(TriStripTest, ContentHasNoNegativeCounts)
{
    std::vector<char const *> ends;
    auto * const strip = createEntity<ForeignStrip>(&SubPool::m_TriStrips, 0, ends);
    EXPECT_NE(contentOf(*strip).indices, nullptr);
    EXPECT_EQ(contentOf(*strip).indexCount, 0);
    TriStrip::destruct(strip);
}

TEST_F(TriStripTest, IsOfKindThirteen)
{
    EXPECT_EQ(bare()->getEntityKind(), 13);
}

TEST_F(TriStripTest, TableHoldsKindThenDataThenFlagThenColour)
{
    EXPECT_EQ(tests::slotOf(&TriStrip::getEntityKind), 2U);
    EXPECT_EQ(tests::slotOf(&TriStrip::getData), 3U);
    EXPECT_EQ(tests::slotOf(&TriStrip::getStripFlag), 4U);
    EXPECT_EQ(tests::slotOf(&TriStrip::setColor), 5U);
}

} // namespace
} // namespace transl_tk
