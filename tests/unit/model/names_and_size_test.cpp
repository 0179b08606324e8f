#include "support/models.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/attributes/branch.h>
#include <keld-transl/attributes/leaf.h>
#include <keld-transl/attributes/node_tree.h>
#include <keld-transl/attributes/parameter.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/reporting/html_logger_entry.h>
#include <keld-transl/reporting/logger.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/tri_strip.h>
#include <keld-transl/topology/vertex.h>

#include <gtest/gtest.h>

namespace transl_tk {
namespace {

class NamesTest : public testing::Test
{
protected:
    static std::string unique(std::string name)
    {
        Pool::getInstance()->uniqueName(name);
        return name;
    }
    static void erase(std::string const & name) { Pool::getInstance()->eraseName(name); }

    tests::ScopedPool m_Pool;
};

TEST_F(NamesTest, FirstHolderKeepsItsNameWhateverItLooksLike)
{
    EXPECT_EQ(unique("x"), "x");
    EXPECT_EQ(unique("x@3"), "x@3");
    EXPECT_EQ(unique(""), "");
    EXPECT_EQ(unique("@"), "@");
}

TEST_F(NamesTest, LaterHoldersAreNumbered)
{
    EXPECT_EQ(unique("x"), "x");
    EXPECT_EQ(unique("x"), "x@1");
    EXPECT_EQ(unique("x"), "x@2");
    erase("x@1");
    EXPECT_EQ(unique("x"), "x@1");
}

TEST_F(NamesTest, AnOldSuffixGoesAwayBeforeCounting)
{
    unique("Door@7");
    EXPECT_EQ(unique("Door@7"), "Door@1");
    EXPECT_EQ(unique("Door@7"), "Door@2");
}

TEST_F(NamesTest, WhatStandsBehindTheLastAtSignIsASuffix)
{
    unique("a@b");
    EXPECT_EQ(unique("a@b"), "a@1");
    unique("a@b@c");
    EXPECT_EQ(unique("a@b@c"), "a@b@1");
    EXPECT_EQ(unique("a@b@c"), "a@b@2");
}

TEST_F(NamesTest, TheSecondEmptyNameIsAtOne)
{
    unique("");
    EXPECT_EQ(unique(""), "@1");
}

TEST_F(NamesTest, CaseCounts)
{
    unique("x");
    EXPECT_EQ(unique("X"), "X");
}

TEST_F(NamesTest, AnErasedNameIsFreeAndAnUnknownOneNoFault)
{
    unique("x");
    erase("y");
    erase("x");
    EXPECT_EQ(unique("x"), "x");
    EXPECT_EQ(tests::currentSubPool().m_Names.size(), 1U);
}

TEST_F(NamesTest, TheSetOfNamesReturnsToItsFirstSizeWhenItEmpties)
{
    std::size_t const buckets = tests::currentSubPool().m_Names.bucket_count();
    std::string name;
    for (int i = 0; i < 1000; ++i)
        unique("name");
    for (int i = 1; i < 1000; ++i)
        erase("name@" + std::to_string(i));
    EXPECT_GT(tests::currentSubPool().m_Names.bucket_count(), buckets);
    erase("name");
    EXPECT_EQ(tests::currentSubPool().m_Names.bucket_count(), buckets);
}

class SizeTest : public NamesTest
{
protected:
    static long long size() { return Pool::getInstance()->getSize(); }
};

constexpr long long EmptySize = 108;

TEST_F(SizeTest, EmptyModelTakes108Bytes)
{
    EXPECT_EQ(size(), EmptySize);
    EXPECT_EQ(size(), EmptySize);
}

TEST_F(SizeTest, EachPointTakes28Bytes)
{
    Point3D::create(0, 0, 0, 0);
    EXPECT_EQ(size(), EmptySize + 28);
    for (int i = 0; i < 9; ++i)
        Point3D::create(0, 0, 0, 0);
    EXPECT_EQ(size(), EmptySize + 280);
}

TEST_F(SizeTest, AVertexTakes29BytesWithAPointAnd13WithAParameter)
{
    Vertex::create(0, 0.5);
    EXPECT_EQ(size(), EmptySize + 13);
    Vertex::create(0, geom::Point::create(1, 2, 3));
    EXPECT_EQ(size(), EmptySize + 13 + 29);
}

TEST_F(SizeTest, AnEdgeTakes17BytesAndAFin13WhateverTheyReferTo)
{
    Edge * const edge = Edge::create(0, nullptr, nullptr, nullptr, true);
    EXPECT_EQ(size(), EmptySize + 17);
    Fin::create(0, edge, true);
    Fin::create(0, nullptr, true);
    EXPECT_EQ(size(), EmptySize + 17 + 2 * 13);
}

TEST_F(SizeTest, ALoopTakes8BytesAnd4ForEachFinNullOnesIncluded)
{
    Loop * const loop = Loop::create(0);
    EXPECT_EQ(size(), EmptySize + 8);
    loop->addFin(nullptr);
    loop->addFin(nullptr);
    EXPECT_EQ(size(), EmptySize + 8 + 2 * 4);
}

TEST_F(SizeTest, AFaceTakes17BytesItsLabelAnd4ForEachLoopNullOnesIncluded)
{
    Face * const face = Face::create(0, nullptr);
    EXPECT_EQ(size(), EmptySize + 17);
    face->setLabel("label");
    for (int i = 0; i < 3; ++i)
        face->addLoop(nullptr);
    EXPECT_EQ(size(), EmptySize + 17 + 5 + 3 * 4);
}

TEST_F(SizeTest, AShellTakes9BytesAnd4ForEachFaceNullOnesIncluded)
{
    Shell * const shell = Shell::create(0);
    EXPECT_EQ(size(), EmptySize + 9);
    shell->addFace(nullptr);
    EXPECT_EQ(size(), EmptySize + 9 + 4);
}

TEST_F(SizeTest, ABodyTakes16BytesItsNameAnd4ForEachShellAndStripNullOnesIncluded)
{
    Body * const body = Body::create(0, "name");
    EXPECT_EQ(size(), EmptySize + 16 + 4);
    body->addShell(nullptr);
    body->addTriStrip(nullptr);
    body->addTriStrip(nullptr);
    EXPECT_EQ(size(), EmptySize + 16 + 4 + 3 * 4);
}

TEST_F(SizeTest, AStripTakesWhatItsArraysHoldAndCountsAloneTakeNothing)
{
    float const floats[6] = {};
    unsigned char const bytes[6] = {};
    int const indices[3] = {};
    TriStrip * strip = TriStrip::create(0, floats, nullptr, 2, nullptr, 5, nullptr, 5, false);
    EXPECT_EQ(size(), EmptySize + 13 + 12 * 2 + 4 * 2);
    TriStrip::destruct(strip);
    strip = TriStrip::create(0, floats, nullptr, 2, floats, -1, indices, -3, false);
    EXPECT_EQ(size(), EmptySize + 13 + 12 * 2 + 4 * 2);
    TriStrip::destruct(strip);
    TriStrip::create(0, floats, bytes, 2, floats, 1, indices, 3, false);
    EXPECT_EQ(size(), EmptySize + 13 + 12 * 2 + 3 * 2 + 4 * (3 + 2 + 3 * 1));
}

TEST_F(SizeTest, TextLinesCountUpToTheirFirstZeroByte)
{
    tests::currentSubPool().m_TextList = {"", "abc", std::string("de\0fg", 5)};
    EXPECT_EQ(size(), EmptySize + (4 + 0) + (4 + 3) + (4 + 2));
}

TEST_F(SizeTest, SortsTheFacesToSplitAndDropsDoubles)
{
    auto & faces = tests::currentSubPool().m_FacesToSplit;
    EXPECT_FALSE(Pool::getInstance()->findFaceToSplit(0));
    faces = {9, 5, 3, 5};
    EXPECT_EQ(size(), EmptySize + 3 * 4);
    EXPECT_EQ(faces, (std::vector<int>{3, 5, 9}));
    EXPECT_TRUE(Pool::getInstance()->findFaceToSplit(5));
    EXPECT_FALSE(Pool::getInstance()->findFaceToSplit(4));
    EXPECT_FALSE(Pool::getInstance()->findFaceToSplit(10));
}

TEST_F(SizeTest, LogEntriesOfEveryListButTheFifthCountNineBytesAndTheirText)
{
    for (int list = 1; list <= 6; ++list)
        Pool::getInstance()->logger()->addEntry("four", list, cad::ILoggerPolicy::Text, false);
    EXPECT_EQ(size(), EmptySize + 5 * (9 + 4));
}

TEST_F(SizeTest, AnAnnotationTakes180Bytes24ForEachPointAndItsTexts)
{
    double const triple[3] = {};
    double const points[6] = {};
    int const ints[3] = {};
    Annotation::create(0, triple, triple, triple, triple, 2, points, ints, ints, ints, ints, 0, 0,
                       0, 0, 0, "abc", "de");
    EXPECT_EQ(size(), EmptySize + 84 + 24 * (2 + 4) + 3 + 2);
}

TEST_F(SizeTest, AnAssemblyTakes41BytesItsTextsItsChildrenAndATransform)
{
    Assembly * const top = Assembly::create(0, "abc");
    EXPECT_EQ(size(), EmptySize + 41 + 3 + 4 * (0 + 1));
    top->setFirstLabel("de");
    top->setSecondLabel("f");
    double transform[16] = {};
    top->setTransform(transform);
    EXPECT_EQ(size(), EmptySize + 41 + 128 + 3 + 2 + 1 + 4);
    top->addChild(Assembly::create(0, ""));
    EXPECT_EQ(size(), EmptySize + (41 + 128 + 6 + 4 * (1 + 1)) + (41 + 4));
}

TEST_F(SizeTest, APartTakes45BytesItsTextsItsListsItsTreeAndATransform)
{
    Part * const part = Part::create(0, "abc");
    constexpr long long EmptyTree = 4;
    EXPECT_EQ(size(), EmptySize + 45 + 3 + 4 * 8 + EmptyTree);
    part->setFirstLabel("d");
    part->setSecondLabel("e");
    part->setPartLabel("fgh");
    part->addPoint(Point3D::create(0, 0, 0, 0));
    part->addPoint(Point3D::create(0, 0, 0, 0));
    double const transform[16] = {0.5};
    part->setTransform(transform);
    EXPECT_EQ(size(), EmptySize + 2 * 28 + 45 + 128 + 8 + 4 * (2 + 8) + EmptyTree);
}

TEST_F(SizeTest, AnInstanceTakesNineBytesAndATransform)
{
    Part * const part = Part::create(0, "");
    long long const before = size();
    Instance * const instance = Instance::create(0, part);
    EXPECT_EQ(size(), before + 9);
    double const transform[16] = {};
    instance->setTransform(transform);
    EXPECT_EQ(size(), before + 9 + 128);
}

TEST_F(SizeTest, AnAttributeTakes16BytesItsNameItsEntitiesAndItsValues)
{
    Attribute * const attribute = Attribute::create("abc", Attribute::Comment);
    EXPECT_EQ(size(), EmptySize + 16 + 3);
    attribute->addEntity(Point3D::create(0, 0, 0, 0));
    long long const before = size();
    EXPECT_EQ(before, EmptySize + 28 + 16 + 3 + 8);
    attribute->addValue("de");
    EXPECT_EQ(size(), before + 8 + 2);
    attribute->addValue(1);
    EXPECT_EQ(size(), before + 10 + 8);
    attribute->addValue(true);
    EXPECT_EQ(size(), before + 18 + 5);
    attribute->addValue(1.0F);
    EXPECT_EQ(size(), before + 23 + 8);
    attribute->addValue(1.0);
    EXPECT_EQ(size(), before + 31 + 12);
    attribute->addValue(static_cast<unsigned char>(1));
    EXPECT_EQ(size(), before + 43 + 5);
    attribute->addValue(static_cast<IValue *>(nullptr));
    EXPECT_EQ(size(), before + 48 + 4);
}

TEST_F(SizeTest, ANodeCountsInFullOnceAndFourBytesAtEveryOtherPlace)
{
    Part * const part = Part::create(0, "");
    long long const before = size();
    Branch * const branch = Branch::create(1, "abc", Branch::Tag{});
    Leaf * const leaf = Leaf::create(2);
    part->getNodeTree()->addNode(branch);
    EXPECT_EQ(size(), before + 4 + 8 + 4 + 12 + 3);
    branch->addNode(leaf);
    EXPECT_EQ(size(), before + 31 + 4 + 8 + 4 + 4);
    branch->addNode(leaf);
    part->getNodeTree()->addNode(branch);
    EXPECT_EQ(size(), before + 51 + 4 + 4);
    leaf->addParameter(Parameter::create(Parameter::Param{}, IValue::create(1)));
    EXPECT_EQ(size(), before + 59 + 8 + 8);
    leaf->addEntity(part);
    EXPECT_EQ(size(), before + 75 + 8);
    branch->addProperty("de", IValue::create("fgh"));
    EXPECT_EQ(size(), before + 83 + (4 + 2) + (8 + 3));
}

TEST_F(SizeTest, AReportEntryTakes12BytesAndItsText)
{
    HtmlLoggerEntry::create("four", HtmlLoggerEntry::Part, HtmlLoggerEntry::EntryType{});
    EXPECT_EQ(size(), EmptySize + 12 + 4);
}

class ClearTest : public NamesTest
{};

TEST_F(ClearTest, DestroysEveryPointWhateverItsId)
{
    for (int const id : {-2147483647 - 1, -1, 1, 70000, 2147483647})
        Point3D::create(id, 0, 0, 0);
    Pool::getInstance()->clear();
    EXPECT_TRUE(tests::points().empty());
    EXPECT_EQ(Pool::getInstance()->getSize(), EmptySize);
}

TEST_F(ClearTest, NamesGoWithTheirComponents)
{
    for (int i = 0; i < 3; ++i)
        Part::create(0, "part");
    Pool::getInstance()->clear();
    EXPECT_TRUE(tests::currentSubPool().m_Names.empty());
    EXPECT_STREQ(Part::create(0, "part")->getName(), "part");
}

TEST_F(ClearTest, MayBeFollowedByASizeThoughThereWereReportEntries)
{
    HtmlLoggerEntry::create("entry", HtmlLoggerEntry::Part, HtmlLoggerEntry::EntryType{});
    Attribute::create("attribute", Attribute::Comment);
    Pool::getInstance()->clear();
    EXPECT_EQ(Pool::getInstance()->getSize(), EmptySize);
    Pool::getInstance()->clear();
}

TEST_F(ClearTest, EmptiesTheLogAndKeepsItsObject)
{
    cad::ILoggerPolicy * const log = Pool::getInstance()->logger();
    log->addEntry("gone", 1, cad::ILoggerPolicy::ErrorLine, false);
    Pool::getInstance()->clear();
    EXPECT_EQ(Pool::getInstance()->logger(), log);
    EXPECT_FALSE(log->hasEntryError(1));
}

TEST_F(ClearTest, KeepsTextLinesAndFacesToSplit)
{
    tests::currentSubPool().m_TextList = {"line"};
    tests::currentSubPool().m_FacesToSplit = {4};
    Pool::getInstance()->clear();
    EXPECT_EQ(tests::currentSubPool().m_TextList, (std::vector<std::string>{"line"}));
    EXPECT_EQ(tests::currentSubPool().m_FacesToSplit, (std::vector<int>{4}));
}

TEST_F(ClearTest, MayRunTwiceAndBeforeAnything)
{
    Pool::getInstance()->clear();
    Point3D::create(0, 0, 0, 0);
    Pool::getInstance()->clear();
    Pool::getInstance()->clear();
    EXPECT_TRUE(tests::currentSubPool().m_LoggerEntries.empty());
}

} // namespace
} // namespace transl_tk
