#include "support/child.h"
#include "support/models.h"
#include "support/shapes.h"
#include "unit/metadata/attribute_contents.h"

#include <keld-common/files.h>
#include <keld-transl/attributes/annotation.h>
#include <keld-transl/metadata/cad_database.h>
#include <keld-transl/metadata/database_policy.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/spot_weld.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/tri_strip.h>

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace transl_tk {
namespace {

using Calls = std::vector<std::string>;

/// Writes down what is asked of it.
class Recorder : public DataBasePolicy
{
public:
    void connect(std::string const &, int const &, int const &, int const &,
                 deckAction const &) override
    {
        m_Calls.push_back("connect");
    }
    void disconnect() override { m_Calls.push_back("disconnect"); }
    void addData(DataBaseType const & type, int const & value) override
    {
        m_Calls.push_back(std::to_string(type) + "=" + std::to_string(value));
    }
    void addData(DataBaseType const &, std::string const &) override { m_Calls.push_back("text"); }
    void addData(DataBaseType const & type) override { m_Calls.push_back(std::to_string(type)); }
    void resetData() override { m_Calls.push_back("reset"); }
    void serialize() override
    {
        // What the model is at that moment.
        SubPool const & model = tests::currentSubPool();
        m_Calls.push_back("serialize " + std::to_string(model.m_Hierarchies.m_Entities.size()) +
                          " " + std::to_string(model.m_Attributes.size()));
    }
    void deserialize(Attribute *) override { m_Calls.push_back("deserialize"); }
    void getData(DataBaseType const &, int &) override { m_Calls.push_back("get"); }
    void getData(DataBaseType const &, std::string &) override { m_Calls.push_back("get"); }
    void storeVORN(std::string const &, int const &) override { m_Calls.push_back("store"); }
    void storeDECK(std::string const &, int const &, int const &) override
    {
        m_Calls.push_back("store");
    }
    void storeNEUTRAL(std::string const &, int const &) override { m_Calls.push_back("store"); }
    void storeData() override { m_Calls.push_back("store"); }
    void addMetadata() override { m_Calls.push_back("add"); }

    Calls m_Calls;
};

/// Fresh storage state: on or off for the life of the object.
class ScopedStorage
{
public:
    explicit ScopedStorage(int enabled) : m_Before(enableDatabaseStorage())
    {
        setDatabaseStorage(enabled);
    }
    ScopedStorage(ScopedStorage const &) = delete;
    ScopedStorage & operator=(ScopedStorage const &) = delete;
    ~ScopedStorage() { setDatabaseStorage(m_Before); }

private:
    int m_Before;
};

class AddDataCadDB : public testing::Test
{
protected:
    /// Counts the model, checks the calls that frame all others and returns those.
    Calls counted()
    {
        addDataCadDB(&m_Recorder);
        return m_Recorder.m_Calls;
    }

    /// What is called for a model that has nothing but shapes.
    Calls countedShapes()
    {
        Calls const calls = counted();
        Calls const before = {"72=0", "73=0", "74=0"};
        Calls const behind = {"70=0", "71=0", "78=0", "3=0", "70=0", "serialize 1 0"};
        EXPECT_TRUE(calls.size() >= 9 && std::equal(before.begin(), before.end(), calls.begin()) &&
                    std::equal(behind.rbegin(), behind.rend(), calls.rbegin()));
        return calls.size() < 9 ? calls : Calls(calls.begin() + 3, calls.end() - 6);
    }

    /// The number of triangles that a model with these meshes has.
    std::string countedTriangles()
    {
        Calls const calls = counted();
        return calls.size() > 4 ? calls[4] : "";
    }

    static void aStrip(int vertexCount, std::vector<int> const & indices, int indexCount)
    {
        std::vector<float> const vertices(static_cast<std::size_t>(3 * vertexCount));
        TriStrip::create(0, vertices.data(), nullptr, vertexCount, nullptr, 0,
                         indices.empty() ? nullptr : indices.data(), indexCount, false);
    }

    void aSurface(int type)
    {
        Surface::create(0, new tests::ForeignSurface(m_Ends, "", geom::Surface::Type(type)));
    }

    void aCurve(int type)
    {
        Curve3D::create(0, new tests::ForeignCurve(m_Ends, "", geom::Curve::Type(type)));
    }

    static SubPool & model() { return tests::currentSubPool(); }

    ScopedStorage m_Storage{1};
    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
    Recorder m_Recorder;
};

Calls const OfAnEmptyModel = {"72=0", "73=0", "74=0", "70=0",         "71=0",
                              "78=0", "3=0",  "70=0", "serialize 1 0"};

TEST_F(AddDataCadDB, CountsNothingInAnEmptyModel)
{
    EXPECT_EQ(counted(), OfAnEmptyModel);
}

TEST_F(AddDataCadDB, CountsTheProductStructure)
{
    Assembly * const top = Assembly::create(0, "top");
    Assembly * const group = Assembly::create(0, "group");
    Part * const part = Part::create(0, "part");
    for (Component * const component : std::initializer_list<Component *>{part, group, part})
        top->addChild(Instance::create(0, component));
    Calls const calls = counted();
    EXPECT_EQ(Calls(calls.begin(), calls.begin() + 6),
              (Calls{"72=2", "73=1", "74=3", "76", "75", "76"}));
}

TEST_F(AddDataCadDB, CountsSurfacesByTheirTypes)
{
    for (int type = -1; type <= 14; ++type)
        aSurface(type);
    EXPECT_EQ(countedShapes(),
              (Calls{"85", "84", "86", "87", "88", "95", "89", "90", "91", "92", "93", "94"}));
}

TEST_F(AddDataCadDB, CountsCurvesByTheirTypes)
{
    for (int type = -1; type <= 9; ++type)
        aCurve(type);
    EXPECT_EQ(countedShapes(), (Calls{"98", "103", "105", "104", "99", "100", "102"}));
}

TEST_F(AddDataCadDB, CountsSurfacesBeforeCurvesAndEachOfThem)
{
    aCurve(5);
    aSurface(12);
    aSurface(12);
    aCurve(5);
    EXPECT_EQ(countedShapes(), (Calls{"94", "94", "99", "99"}));
}

TEST_F(AddDataCadDB, PassesCarriersWithoutGeometryOver)
{
    Surface::create(0, nullptr);
    EXPECT_EQ(countedShapes(), Calls());
}

TEST_F(AddDataCadDB, CountsTheTrianglesOfStripsByVertices)
{
    aStrip(5, {}, 0);
    aStrip(3, {}, 9); // a count of indices without indices
    EXPECT_EQ(countedTriangles(), "71=4");
}

TEST_F(AddDataCadDB, CountsTheTrianglesOfListsByIndices)
{
    aStrip(100, {0, 1, 2, 2, 1, 3}, 6);
    aStrip(100, {0, 1, 2, 3, 4}, 5);
    EXPECT_EQ(countedTriangles(), "71=3");
}

TEST_F(AddDataCadDB, CountsAListWithoutAPositiveCountAsAStrip)
{
    aStrip(10, {0, 1, 2}, 0);
    aStrip(20, {0, 1, 2}, -3);
    EXPECT_EQ(countedTriangles(), "71=26");
}

TEST_F(AddDataCadDB, CountsAStripOfOneVertexAsOneLess)
{
    aStrip(1, {}, 0);
    EXPECT_EQ(countedTriangles(), "71=-1");
}

TEST_F(AddDataCadDB, CountsAttributesByTheirTypes)
{
    for (int type = -1; type <= 18; ++type)
        tests::anAttribute("name", type, {});
    Calls const calls = counted();
    ASSERT_EQ(calls.size(), OfAnEmptyModel.size() + 16);
    EXPECT_EQ(
        Calls(calls.begin() + 5, calls.end() - 4),
        (Calls{"2", "2", "2", "2", "8", "2", "9", "2", "2", "79", "4", "0", "2", "2", "2", "2"}));
}

TEST_F(AddDataCadDB, CountsCommentsNamedAnnotationApart)
{
    for (char const * name : {"ANNOTATION:", "ANNOTATION", "annotation:", "ANNOTATION: ", ""})
        tests::anAttribute(name, 7, {});
    tests::anAttribute("ANNOTATION:", 5, {});
    Calls const calls = counted();
    EXPECT_EQ(Calls(calls.begin() + 5, calls.end() - 4), (Calls{"3", "9", "9", "9", "9", "8"}));
}

TEST_F(AddDataCadDB, CountsFacesSpotWeldsAndAnnotations)
{
    for (int i = 0; i < 2; ++i)
        Face::create(0, nullptr);
    for (int i = 0; i < 3; ++i)
        SpotWeld::create(0, 1, 2, 3);
    double const triple[3] = {1, 2, 3};
    int const ints[3] = {1, 2, 3};
    for (int i = 0; i < 4; ++i)
        ASSERT_NE(Annotation::create(0, triple, triple, triple, triple, 1, triple, ints, ints, ints,
                                     ints, 1, 2, 3, 4, 5, "a", "b"),
                  nullptr);
    EXPECT_EQ(counted(), (Calls{"72=0", "73=0", "74=0", "70=2", "71=0", "78=3", "3=4", "70=2",
                                "serialize 1 0"}));
}

TEST_F(AddDataCadDB, LeavesNothingButAnEmptyPart)
{
    Assembly::create(0, "empty_part");
    aSurface(12);
    aCurve(5);
    aStrip(3, {}, 0);
    Face::create(0, nullptr);
    SpotWeld::create(0, 1, 2, 3);
    tests::anAttribute("name", 5, {});
    addDataCadDB(&m_Recorder);
    for (auto const store : {&SubPool::m_Surfaces, &SubPool::m_Curves3D, &SubPool::m_TriStrips,
                             &SubPool::m_Faces, &SubPool::m_SpotWelds})
        EXPECT_TRUE((model().*store).m_Entities.empty());
    EXPECT_TRUE(model().m_Attributes.empty());
    ASSERT_EQ(model().m_Hierarchies.m_Entities.size(), 1U);
    auto * const part = dynamic_cast<Part *>(model().m_Hierarchies.m_Entities.begin()->second);
    ASSERT_NE(part, nullptr);
    EXPECT_STREQ(part->getName(), "empty_part");
    EXPECT_EQ(part->getId(), 1);
}

TEST_F(AddDataCadDB, DoesNothingWithoutStoragePolicyOrModel)
{
    Part::create(0, "part");
    tests::anAttribute("name", 5, {});
    addDataCadDB(nullptr);
    setDatabaseStorage(0);
    addDataCadDB(&m_Recorder);
    EXPECT_EQ(model().m_Hierarchies.m_Entities.size(), 1U);
    EXPECT_EQ(model().m_Attributes.size(), 1U);
    setDatabaseStorage(1);
    Pool::destruct();
    addDataCadDB(&m_Recorder);
    EXPECT_EQ(m_Recorder.m_Calls, Calls());
}

TEST(UseCadDatabase, AsksAfreshAtEachCall)
{
    ScopedStorage const storage(1);
    EXPECT_TRUE(useCadDatabase());
    setDatabaseStorage(0);
    EXPECT_FALSE(useCadDatabase());
    setDatabaseStorage(-2);
    EXPECT_TRUE(useCadDatabase());
}

/// What three calls of `initCadDatabase` give in a process that has not asked before, as digits.
/// The storage is `first` before the first call and `later` from then on.
int threeCalls(int first, int later)
{
    return tests::Child([first, later] {
               setDatabaseStorage(first);
               int answers = initCadDatabase();
               setDatabaseStorage(later);
               for (int i = 0; i < 2; ++i)
                   answers = 10 * answers + initCadDatabase();
               return answers;
           })
        .wait();
}

TEST(InitCadDatabase, TellsTheFirstCallFromLaterOnesWhenStorageIsOn)
{
    EXPECT_EQ(threeCalls(1, 1), 11) << "0, 1, 1";
}

TEST(InitCadDatabase, GivesTwoWhenStorageIsOff)
{
    EXPECT_EQ(threeCalls(0, 0), 222);
}

TEST(InitCadDatabase, AsksOnlyOnce)
{
    EXPECT_EQ(threeCalls(1, 0), 11);
    EXPECT_EQ(threeCalls(0, 1), 222);
}

TEST(InitCadDatabase, StatesHaveTheirNumbers)
{
    EXPECT_EQ(CadDataBaseFirstUse, 0);
    EXPECT_EQ(CadDataBaseInUse, 1);
    EXPECT_EQ(CadDataBaseOff, 2);
    EXPECT_EQ(CadDataBaseUnknown, 3);
}

} // namespace
} // namespace transl_tk
