#include "support/captured_stream.h"
#include "support/models.h"
#include "support/report_capture.h"
#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/reporting/html_logger.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/cartesian_coord.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/spot_weld.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/tri_strip.h>
#include <keld-transl/topology/uv_curve.h>

#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace transl_tk {
namespace {

struct DestructLogger
{
    void operator()(HtmlLogger * logger) const { HtmlLogger::destruct(logger); }
};
using OwnedLogger = std::unique_ptr<HtmlLogger, DestructLogger>;

OwnedLogger aLogger(int status = 0)
{
    return OwnedLogger(
        HtmlLogger::create("file.ext", static_cast<HtmlLogger::status_type>(status)));
}

HtmlLoggerEntry::EntityType kind(int number)
{
    return static_cast<HtmlLoggerEntry::EntityType>(number);
}

HtmlLoggerEntry::EntryType entryType(int number)
{
    return static_cast<HtmlLoggerEntry::EntryType>(number);
}

/// Text, kind and type of every entry.
std::vector<std::string> entriesOf(HtmlLogger & logger)
{
    std::vector<std::string> found;
    EXPECT_TRUE(logger.forEachEntry(
        [](HtmlLoggerEntry * entry, void * texts) {
            static_cast<std::vector<std::string> *>(texts)->push_back(
                std::string(entry->getText()) + ' ' + std::to_string(entry->getEntityType()) + ' ' +
                std::to_string(entry->getEntryType()));
            return true;
        },
        &found));
    return found;
}

constexpr char const * names[] = {
    "",
    "Assembly",
    "Part",
    "Instance",
    "Point",
    "CoordinateSystem",
    "Axis",
    "Curve",
    "UV_Curve",
    "Spoke",
    "Vertex",
    "Region",
    "Facade",
    "Edge",
    "Fin",
    "Loop",
    "Shell",
    "Surface",
    "Face",
    "Facet",
    "Body",
    "Welds",
    "Model",
    "Attributes",
    "PMIs",
    "Layers",
    "Filters",
    "Sets",
    "Categories",
    "Publications",
    "Annotations",
    "Dimensions",
    "Features",
    "Block",
    "Object",
    "total",
};

TEST(HtmlLoggerEntry, EveryTypeHasAName)
{
    for (int number = 0; number <= 35; ++number)
        EXPECT_EQ(HtmlLoggerEntry::baseToStringMapping(kind(number)), names[number]);
}

TEST(HtmlLoggerEntry, OtherNumbersHaveNone)
{
    for (int const number : {-1, 36, 1000, -2147483647 - 1, 2147483647})
        EXPECT_EQ(HtmlLoggerEntry::baseToStringMapping(kind(number)), "");
}

TEST(HtmlLoggerEntry, EveryNameHasItsType)
{
    for (int number = 0; number <= 35; ++number)
        EXPECT_EQ(HtmlLoggerEntry::stringToBaseMapping(names[number]), number);
}

TEST(HtmlLoggerEntry, NamesMatchWholeWithTheirCase)
{
    for (char const * const text : {"assembly", "Total", "Assembly ", "UVCurve", "PMI", "0"})
        EXPECT_EQ(HtmlLoggerEntry::stringToBaseMapping(text), 0) << text;
    EXPECT_EQ(HtmlLoggerEntry::stringToBaseMapping(std::string("Part\0", 5)), 0);
}

TEST(HtmlLoggerEntry, TypesHaveTheirNumbers)
{
    EXPECT_EQ(HtmlLoggerEntry::Assembly, 1);
    EXPECT_EQ(HtmlLoggerEntry::UVCurve, 8);
    EXPECT_EQ(HtmlLoggerEntry::Face, 18);
    EXPECT_EQ(HtmlLoggerEntry::Annotations, 30);
    EXPECT_EQ(HtmlLoggerEntry::Total, 35);
}

TEST(HtmlLoggerEntry, IsKeptByTheCurrentSubPoolInOrder)
{
    tests::ScopedPool const pool;
    HtmlLoggerEntry * const first = HtmlLoggerEntry::create("first", kind(4), entryType(1));
    HtmlLoggerEntry * const second = HtmlLoggerEntry::create("", kind(-9), entryType(77));
    EXPECT_EQ(tests::currentSubPool().m_LoggerEntries,
              (std::vector<HtmlLoggerEntry *>{first, second}));
    EXPECT_STREQ(first->getText(), "first");
    EXPECT_EQ(first->getEntityType(), 4);
    EXPECT_EQ(first->getEntryType(), 1);
    EXPECT_EQ(second->getEntityType(), -9);
    EXPECT_EQ(second->getEntryType(), 77);
    Pool::getInstance()->clear();
    EXPECT_TRUE(tests::currentSubPool().m_LoggerEntries.empty());
    Pool::getInstance()->clear();
}

TEST(HtmlLoggerEntry, IsNotMadeOfNullNorWithoutAPool)
{
    EXPECT_EQ(HtmlLoggerEntry::create("text", kind(1), entryType(0)), nullptr);
    tests::ScopedPool const pool;
    EXPECT_EQ(HtmlLoggerEntry::create(nullptr, kind(1), entryType(0)), nullptr);
    EXPECT_EQ(HtmlLoggerEntry::extract(nullptr, kind(1), entryType(0)), nullptr);
    EXPECT_TRUE(tests::currentSubPool().m_LoggerEntries.empty());
}

TEST(HtmlLoggerEntry, IsTheCallersWhenExtractedWithOrWithoutAPool)
{
    HtmlLoggerEntry * const entry = HtmlLoggerEntry::extract("text", kind(5), entryType(2));
    EXPECT_STREQ(entry->getText(), "text");
    EXPECT_EQ(entry->getEntityType(), 5);
    EXPECT_EQ(entry->getEntryType(), 2);
    HtmlLoggerEntry::destruct(entry);
    HtmlLoggerEntry::destruct(nullptr);
}

TEST(HtmlLoggerEntry, TableHoldsKindTypeAndText)
{
    EXPECT_EQ(tests::slotOf(&HtmlLoggerEntry::getEntityType), 2U);
    EXPECT_EQ(tests::slotOf(&HtmlLoggerEntry::getEntryType), 3U);
    EXPECT_EQ(tests::slotOf(&HtmlLoggerEntry::getText), 4U);
}

constexpr unsigned absent = 0xFFFFFFFF;

TEST(HtmlLoggerWithoutAPool, HasTheFileNameAndNothingElse)
{
    OwnedLogger const logger = aLogger(2);
    EXPECT_EQ(logger->getFileName(), "file.ext");
    EXPECT_EQ(logger->getModelName(), "file.ext");
    EXPECT_EQ(logger->getTreeText(), "");
    EXPECT_EQ(logger->getStatus(), 2);
    for (int number = 0; number <= 36; ++number)
        EXPECT_EQ(logger->getEntityCount(kind(number)), absent);
    EXPECT_TRUE(entriesOf(*logger).empty());
}

class HtmlLoggerTest : public testing::Test
{
protected:
    tests::Ends m_Ends;
    tests::ScopedPool m_Pool;
};

TEST_F(HtmlLoggerTest, CountsNothingInAnEmptyModel)
{
    OwnedLogger const logger = aLogger(7);
    for (int const counted : {1, 2, 3, 4, 5, 7, 8, 13, 14, 15, 16, 17, 18, 19, 20, 21, 23, 30})
        EXPECT_EQ(logger->getEntityCount(kind(counted)), 0U) << counted;
    for (int const left : {0, 6, 9, 10, 11, 12, 22, 24, 25, 26, 27, 28, 29, 31, 32, 33, 34, 35})
        EXPECT_EQ(logger->getEntityCount(kind(left)), absent) << left;
    EXPECT_EQ(logger->getFailedCount(kind(4)), absent);
    EXPECT_EQ(logger->getTreeText(), "");
    EXPECT_EQ(logger->getStatus(), 7);
}

TEST_F(HtmlLoggerTest, CountsEveryStoreUnderItsKind)
{
    auto const times = [](int count, auto && make) {
        for (int i = 0; i < count; ++i)
            make();
    };
    constexpr double triple[3] = {};
    constexpr int ints[3] = {};
    constexpr float vertices[3] = {};
    times(1, [] { Assembly::create(0, "assembly"); });
    times(2, [] { Part::create(0, "part"); });
    Part * const part = Part::create(0, "part");
    times(4, [&] { Instance::create(0, part); });
    times(5, [] { Point3D::create(0, 1, 2, 3); });
    times(6, [&] { CartesianCoord::create(0, triple, triple, triple, triple); });
    times(7, [this] { Curve3D::create(0, new tests::ForeignCurve(m_Ends, "curve")); });
    times(8, [] { UVCurve::create(0, nullptr); });
    times(9, [] { Edge::create(0, nullptr, nullptr, nullptr, true); });
    times(10, [] { Fin::create(0, nullptr, true); });
    times(11, [] { Loop::create(0); });
    times(12, [] { Shell::create(0); });
    times(13, [] { Surface::create(0, nullptr); });
    times(14, [] { Face::create(0, nullptr); });
    times(15, [&] { TriStrip::create(0, vertices, nullptr, 1, nullptr, 0, nullptr, 0, false); });
    times(16, [] { Body::create(0, "body"); });
    times(17, [] { SpotWeld::create(0, 1, 2, 3); });
    times(18, [] { Attribute::create("attribute", static_cast<Attribute::Type>(1)); });
    times(19, [&] {
        Annotation::create(0, triple, triple, triple, triple, 0, nullptr, ints, ints, ints, ints, 0,
                           0, 0, 0, 0, "", "");
    });
    OwnedLogger const logger = aLogger();
    struct Row
    {
        int kind;
        unsigned count;
    };
    Row const rows[] = {{1, 1},   {2, 3},   {3, 4},   {4, 5},   {5, 6},   {7, 7},
                        {8, 8},   {13, 9},  {14, 10}, {15, 11}, {16, 12}, {17, 13},
                        {18, 14}, {19, 15}, {20, 16}, {21, 17}, {23, 18}, {30, 19}};
    for (Row const & row : rows)
        EXPECT_EQ(logger->getEntityCount(kind(row.kind)), row.count) << row.kind;
    EXPECT_EQ(logger->getEntityCount(kind(10)), absent) << "vertices have no count";
}

TEST_F(HtmlLoggerTest, CountsAreSetByTheHost)
{
    OwnedLogger const logger = aLogger();
    logger->setEntityCount(kind(6), 12);
    logger->setFailedCount(kind(6), 5);
    logger->setEntityCount(kind(4), 3000000000U);
    EXPECT_EQ(logger->getEntityCount(kind(6)), 12U);
    EXPECT_EQ(logger->getFailedCount(kind(6)), 5U);
    EXPECT_EQ(logger->getEntityCount(kind(4)), 3000000000U);
}

TEST_F(HtmlLoggerTest, LookingForAKindMakesItsCounts)
{
    OwnedLogger const logger = aLogger();
    EXPECT_EQ(logger->getEntityCount(kind(6)), absent);
    EXPECT_EQ(logger->getFailedCount(kind(6)), absent);
    EXPECT_FALSE(logger->hasEntity(kind(6)));
    EXPECT_EQ(logger->getEntityCount(kind(6)), 0U);
    EXPECT_EQ(logger->getFailedCount(kind(6)), 0U);
}

TEST_F(HtmlLoggerTest, HasAKindWithACountAFailureOrAnEntry)
{
    OwnedLogger const logger = aLogger();
    logger->setEntityCount(kind(6), 1);
    logger->setFailedCount(kind(9), 1);
    logger->addEntry(HtmlLoggerEntry::extract("text", kind(11), entryType(0)));
    for (int const known : {6, 9, 11})
        EXPECT_TRUE(logger->hasEntity(kind(known))) << known;
    for (int const unknown : {0, 4, 12})
        EXPECT_FALSE(logger->hasEntity(kind(unknown))) << unknown;
}

TEST_F(HtmlLoggerTest, CountsEntriesByTypeAndOthersNowhere)
{
    OwnedLogger const logger = aLogger();
    for (int const type : {2, 0, 2, 1, 2, 1, 3, -1})
        logger->addEntry(HtmlLoggerEntry::extract("text", kind(1), entryType(type)));
    logger->addEntry(nullptr);
    EXPECT_EQ(logger->getEntryCount(entryType(0)), 1U);
    EXPECT_EQ(logger->getEntryCount(entryType(1)), 2U);
    EXPECT_EQ(logger->getEntryCount(entryType(2)), 3U);
    EXPECT_EQ(logger->getEntryCount(entryType(3)), 0U);
    EXPECT_EQ(logger->getEntryCount(entryType(-1)), 0U);
    EXPECT_EQ(entriesOf(*logger).size(), 8U);
}

TEST_F(HtmlLoggerTest, CopiesTheEntriesOfTheModel)
{
    HtmlLoggerEntry::create("<first>", kind(4), entryType(2));
    HtmlLoggerEntry::create("second", kind(-5), entryType(9));
    OwnedLogger const logger = aLogger();
    Pool::getInstance()->clear();
    EXPECT_EQ(entriesOf(*logger), (std::vector<std::string>{"<first> 4 2", "second -5 9"}));
    EXPECT_TRUE(logger->hasEntity(kind(-5)));
    EXPECT_EQ(logger->getEntryCount(entryType(2)), 1U);
}

TEST_F(HtmlLoggerTest, TheWalkOverEntriesStopsAtTheFirstFalse)
{
    OwnedLogger const logger = aLogger();
    for (int i = 0; i < 3; ++i)
        logger->addEntry(HtmlLoggerEntry::extract("text", kind(1), entryType(0)));
    int calls = 0;
    EXPECT_FALSE(logger->forEachEntry(
        [](HtmlLoggerEntry *, void * count) { return ++*static_cast<int *>(count) < 2; }, &calls));
    EXPECT_EQ(calls, 2);
}

TEST_F(HtmlLoggerTest, AModelWithoutStructureIsNamedAfterTheFileUnlessTheStatusIsTwo)
{
    EXPECT_EQ(aLogger(0)->getModelName(), "file.ext");
    EXPECT_EQ(aLogger(1)->getModelName(), "file.ext");
    EXPECT_EQ(aLogger(2)->getModelName(), "");
}

TEST_F(HtmlLoggerTest, AMadeAssemblyGivesTheLastChildsNameAndNoTree)
{
    Part * const part = Part::create(1, "first");
    Part::create(2, "last");
    EXPECT_EQ(aLogger()->getModelName(), "last");
    EXPECT_EQ(aLogger()->getTreeText(), "");
    EXPECT_EQ(aLogger()->getEntityCount(kind(1)), 1U);
    Instance::create(0, part);
    EXPECT_EQ(aLogger(2)->getModelName(), "first") << "an instance has its component's name";
}

TEST_F(HtmlLoggerTest, ItCountsBeforeItMakesTheTopAssembly)
{
    Part::create(1, "part");
    EXPECT_EQ(aLogger()->getEntityCount(kind(1)), 0U);
    EXPECT_EQ(aLogger()->getEntityCount(kind(1)), 1U);
}

TEST_F(HtmlLoggerTest, AMadeAssemblyWithoutChildrenLeavesTheNameEmpty)
{
    Assembly::create(-1, "made");
    EXPECT_EQ(aLogger()->getModelName(), "");
    EXPECT_EQ(aLogger()->getTreeText(), "");
}

TEST_F(HtmlLoggerTest, WritesTheTreeOfTheTopAssembly)
{
    Assembly * const a = Assembly::create(0, "A");
    Assembly * const b = Assembly::create(0, "B");
    a->addChild(Part::create(0, "P"));
    a->addChild(Instance::create(0, b));
    a->addChild(b);
    b->addChild(Part::create(0, "<Q> & co"));
    a->addChild(Part::create(0, "R"));
    OwnedLogger const logger = aLogger();
    EXPECT_EQ(logger->getTreeText(), "<pre align=\"left\">        A(assembly)<br></pre>"
                                     "<pre align=\"left\">            P(part)<br></pre>"
                                     "<pre align=\"left\">            B(instance)<br></pre>"
                                     "<pre align=\"left\">            B(assembly)<br></pre>"
                                     "<pre align=\"left\">                <Q> & co(part)<br></pre>"
                                     "<pre align=\"left\">            R(part)<br></pre>");
    EXPECT_EQ(logger->getModelName(), "A");
}

TEST_F(HtmlLoggerTest, TheTreeEndsAtAnAssemblyThatIsItsOwnDescendant)
{
    Assembly * const a = Assembly::create(0, "A");
    Assembly * const b = Assembly::create(0, "B");
    a->addChild(b);
    b->addChild(a);
    a->setParent(nullptr);
    tests::CapturedStream const errors(std::cerr);
    tests::ReportCapture const report;
    EXPECT_EQ(aLogger()->getTreeText(), "<pre align=\"left\">        A(assembly)<br></pre>"
                                        "<pre align=\"left\">            B(assembly)<br></pre>");
    EXPECT_EQ(errors.text(),
              "    Error : The assembly \"A\" is its own descendant; the walk ends there.\n");
}

TEST_F(HtmlLoggerTest, VeryDeepTreesAreNotIndentedBeyondLevelThousand)
{
    Assembly * last = Assembly::create(0, "top");
    for (int level = 2; level <= 1002; ++level) {
        Assembly * const next = Assembly::create(0, "next");
        last->addChild(next);
        last = next;
    }
    std::string const tree = aLogger()->getTreeText();
    EXPECT_NE(tree.find(">" + std::string(4000, ' ') + "next@997("), std::string::npos);
    EXPECT_NE(tree.find(">" + std::string(4004, ' ') + "next@998("), std::string::npos);
    EXPECT_NE(tree.find(">" + std::string(4004, ' ') + "next@1000("), std::string::npos);
}

TEST_F(HtmlLoggerTest, TableHoldsTheOperationsInTheirOrder)
{
    EXPECT_EQ(tests::slotOf(&HtmlLogger::forEachEntry), 2U);
    EXPECT_EQ(tests::slotOf(&HtmlLogger::getFileName), 3U);
    EXPECT_EQ(tests::slotOf(&HtmlLogger::getStatus), 4U);
    EXPECT_EQ(tests::slotOf(&HtmlLogger::getTreeText), 5U);
    EXPECT_EQ(tests::slotOf(&HtmlLogger::getModelName), 6U);
    EXPECT_EQ(tests::slotOf(&HtmlLogger::addEntry), 7U);
    EXPECT_EQ(tests::slotOf(&HtmlLogger::setEntityCount), 8U);
    EXPECT_EQ(tests::slotOf(&HtmlLogger::setFailedCount), 9U);
    EXPECT_EQ(tests::slotOf(&HtmlLogger::getEntityCount), 10U);
    EXPECT_EQ(tests::slotOf(&HtmlLogger::getFailedCount), 11U);
    EXPECT_EQ(tests::slotOf(&HtmlLogger::hasEntity), 12U);
    EXPECT_EQ(tests::slotOf(&HtmlLogger::getEntryCount), 13U);
}

TEST(HtmlLogger, DestructionOfNullIsNoFault)
{
    HtmlLogger::destruct(nullptr);
}

} // namespace
} // namespace transl_tk
