#include "stream/product_stream.h"
#include "support/child.h"
#include "support/foreign_value.h"

#include <keld-transl/reporting/html_logger_entry.h>
#include <keld-transl/reporting/logger_policy.h>

#include <climits>
#include <csignal>
#include <sys/resource.h>

namespace transl_tk {
namespace {

using namespace tests;
using records::References;

class AttributeGolden : public ProductStream
{
protected:
    static Attribute * make(char const * name, int type)
    {
        return Attribute::create(name, static_cast<Attribute::Type>(type));
    }

    static References referencesOf(Attribute & attribute)
    {
        References found;
        for (Base * const entity : entitiesOf(attribute))
            found.emplace_back(entity->getId(), entity->getEntityKind());
        return found;
    }
};

TEST_F(AttributeGolden, EveryFieldStandsInItsPlace)
{
    Attribute * const attribute = make("colour", 3);
    attribute->addValue("text");
    attribute->addValue(-2);
    attribute->addValue(true);
    attribute->addValue(2.5);
    attribute->addValue(static_cast<unsigned char>(255));
    attribute->addEntity(Point3D::create(7, 1, 2, 3));
    attribute->addEntity(Part::create(8, "p"));

    ByteString record;
    record.i32(6).raw({'c', 'o', 'l', 'o', 'u', 'r'}).i32(3).i32(5);
    record.i32(1).i32(4).raw({'t', 'e', 'x', 't'});
    record.i32(2).i32(-2);
    record.i32(3).u8(1);
    record.i32(5).f64({2.5});
    record.i32(6).u8(255);
    record.i32(4).i32(7).i32(9).i32(8).i32(7);
    ASSERT_EQ(record.bytes().size(), 16U + 6 + 8 * 2 + (8 + 4) + 8 + 5 + 12 + 5);
    expectTravelsAs(records::model(
        {{Points, {records::point(7)}}, {Parts, {records::part(8, "p")}}, {Attributes, {record}}}));
    Attribute & read = ProductStream::attribute(0);
    EXPECT_STREQ(read.getName(), "colour");
    EXPECT_EQ(read.getType(), 3);
    ASSERT_EQ(read.getNumValues(), 5);
    double number = 0;
    read.getValue(3)->getValue(number);
    EXPECT_EQ(number, 2.5);
    EXPECT_EQ(referencesOf(read), (References{{7, 9}, {8, 7}}));
}

TEST_F(AttributeGolden, ABareAttributeTakesSixteenBytes)
{
    make("", 0);
    expectTravelsAs(records::model(Attributes, {ByteString().zeros(16)}));
}

TEST_F(AttributeGolden, AttributesStandInTheOrderOfTheirList)
{
    make("z", 2);
    make("a", INT_MIN);
    make("z", 14);
    expectTravelsAs(records::model(Attributes, {records::attribute("z", 2, {}, {}),
                                                records::attribute("a", INT_MIN, {}, {}),
                                                records::attribute("z", 14, {}, {})}));
}

TEST_F(AttributeGolden, AnAttributeHangsOnAnEntityOfEveryKindButUVCurves)
{
    Part * const part = Part::create(9, "p");
    double const third[3] = {-3, 6, -3};
    std::vector<Base *> const entities = {
        Body::create(1, ""),
        makeCurve(2),
        makeUVCurve(3),
        Edge::create(4, nullptr, nullptr, nullptr, true),
        Face::create(5, nullptr),
        Fin::create(6, nullptr, true),
        Instance::create(7, part),
        Loop::create(8),
        Point3D::create(9, 1, 2, 3),
        CartesianCoord::create(10, L, A, B, third),
        Shell::create(11),
        makeSurface(12),
        makeStrip(13),
        makeVertex(14),
        SpotWeld::create(15, 1, 2, 3),
        makeAnnotation(16),
    };
    Attribute * const attribute = make("", 0);
    References written;
    for (Base * const entity : entities) {
        attribute->addEntity(entity);
        written.emplace_back(entity->getId(), entity->getEntityKind());
    }
    for (int kind = 1; kind <= 16; ++kind)
        EXPECT_EQ(written[static_cast<std::size_t>(kind) - 1], std::pair(kind, kind));

    std::string const name = segmentName();
    long long const size = Server::writeSharedMem(name);
    Bytes const bytes = segmentBytes(name);
    Server::unmapSharedMemory(false);
    Bytes const record = records::attribute("", 0, {}, written).bytes();
    ASSERT_EQ(record.size(), 16U + 8 * 16);
    Bytes end(bytes.end() - static_cast<std::ptrdiff_t>(record.size() + 32), bytes.end() - 32);
    EXPECT_EQ(end, record);
    EXPECT_EQ(static_cast<std::size_t>(size), bytes.size());

    currentSubPool().clear();
    read(bytes);
    EXPECT_EQ(Server::exchangeFailure(), "");
    written.erase(written.begin() + 2);
    EXPECT_EQ(referencesOf(ProductStream::attribute(0)), written);
}

TEST_F(AttributeGolden, AReferenceToAUVCurveIsWrittenAndCountedButNeverAttaches)
{
    Attribute * const attribute = make("a", 1);
    attribute->addEntity(makeUVCurve(5));
    attribute->addEntity(Point3D::create(5, 1, 2, 3));
    auto const bytes =
        records::model({{Points, {records::point(5)}},
                        {UVCurves, {ByteString().i32(5).i32(3).raw(records::uvCurve())}},
                        {Attributes, {records::attribute("a", 1, {}, {{5, 3}, {5, 9}})}}});
    expectWrittenAs(bytes);
    currentSubPool().clear();
    read(bytes);
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(countOf(&SubPool::m_UVCurves), 1U);
    EXPECT_EQ(referencesOf(ProductStream::attribute(0)), (References{{5, 9}}));
}

TEST_F(AttributeGolden, KindsOutsideOneToSixteenAndOtherStoresAttachNothingAndTheListGoesOn)
{
    References references;
    for (int const kind : {INT_MIN, -1, 0, 17, 18, INT_MAX})
        references.emplace_back(5, kind);
    // There is a point 5, but no body, and no point 6.
    references.emplace_back(5, 1);
    references.emplace_back(6, 9);
    references.emplace_back(5, 9);
    read(records::model({{Points, {records::point(5)}},
                         {Attributes,
                          {records::attribute("a", 1, {}, references),
                           records::attribute("b", 1, {}, {{5, 9}})}}}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(referencesOf(ProductStream::attribute(0)), (References{{5, 9}}));
    EXPECT_EQ(referencesOf(ProductStream::attribute(1)), (References{{5, 9}}));
}

TEST_F(AttributeGolden, AnOddCountOfReferencesReadsOnePairMoreThanItsHalf)
{
    ByteString odd;
    odd.text("a").i32(1).i32(0).i32(3).i32(5).i32(9).i32(6).i32(9);
    read(records::model({{Points, {records::point(5), records::point(6)}},
                         {Attributes, {odd, records::attribute("b", 2, {}, {})}}}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(referencesOf(ProductStream::attribute(0)), (References{{5, 9}, {6, 9}}));
    EXPECT_STREQ(ProductStream::attribute(1).getName(), "b");
}

TEST_F(AttributeGolden, AnEntityThatStandsTwiceIsWrittenTwice)
{
    Attribute * const attribute = make("", 0);
    Point3D * const point = Point3D::create(5, 1, 2, 3);
    attribute->addEntity(point);
    attribute->addEntity(point);
    expectTravelsAs(
        records::model({{Points, {records::point(5)}},
                        {Attributes, {records::attribute("", 0, {}, {{5, 9}, {5, 9}})}}}));
}

TEST_F(AttributeGolden, AnEntityThatDiedIsWrittenAndSizedByNobody)
{
    Attribute * const attribute = make("a", 1);
    for (int const id : {1, 2, 3})
        attribute->addEntity(Point3D::create(id, 1, 2, 3));
    Point3D::destruct(entity<Point3D>(&SubPool::m_Points, 2));
    expectTravelsAs(
        records::model({{Points, {records::point(1), records::point(3)}},
                        {Attributes, {records::attribute("a", 1, {}, {{1, 9}, {3, 9}})}}}));
}

TEST_F(AttributeGolden, ANullValueIsABareTagOfFourBytes)
{
    Attribute * const attribute = make("", 0);
    attribute->addValue(static_cast<IValue *>(nullptr));
    attribute->addValue(7);
    ByteString record;
    record.i32(0).i32(0).i32(2).i32(0).i32(2).i32(7).i32(0);
    expectTravelsAs(records::model(Attributes, {record}));
    EXPECT_EQ(ProductStream::attribute(0).getValue(0), nullptr);
}

TEST_F(AttributeGolden, AValueOfAnUnknownTypeIsItsBareTag)
{
    Attribute * const attribute = make("", 0);
    std::vector<ByteString> tags;
    for (int const type : {7, -3, INT_MAX}) {
        attribute->addValue(static_cast<IValue *>(new ForeignValue(type)));
        tags.push_back(ByteString().i32(type));
    }
    expectWrittenAs(records::model(Attributes, {records::attribute("", 0, tags, {})}));
}

TEST_F(AttributeGolden, UnknownTagsReadAsNullAndTheReaderStaysInStep)
{
    std::vector<ByteString> values;
    for (int const tag : {INT_MIN, -1, 0, 7, 8, INT_MAX})
        values.push_back(ByteString().i32(tag));
    values.push_back(records::intValue(5));
    read(records::model(
        Attributes, {records::attribute("a", 1, values, {}), records::attribute("b", 2, {}, {})}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    Attribute & read = ProductStream::attribute(0);
    ASSERT_EQ(read.getNumValues(), 7);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(read.getValue(i), nullptr);
    int number = 0;
    read.getValue(6)->getValue(number);
    EXPECT_EQ(number, 5);
    EXPECT_STREQ(ProductStream::attribute(1).getName(), "b");
}

TEST_F(AttributeGolden, AFloatIsReadFromAStream)
{
    read(records::model(Attributes, {records::attribute("a", 1, {records::floatValue(0.1F)}, {})}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    IValue * const value = ProductStream::attribute(0).getValue(0);
    ASSERT_EQ(value->getType(), 4);
    float number = 0;
    value->getValue(number);
    EXPECT_EQ(number, 0.1F);
}

TEST_F(AttributeGolden, AFloatHasASizeButWritingItEndsTheProcess)
{
    make("", 0)->addValue(0.5F);
    EXPECT_EQ(Pool::getInstance()->getSize(), 108 + 16 + 8);
    Child writer([] {
        // No core file is wanted of this one.
        rlimit const none = {0, 0};
        ::setrlimit(RLIMIT_CORE, &none);
        std::signal(SIGABRT, SIG_DFL);
        Server::writeSharedMem(segmentName());
        return 0;
    });
    EXPECT_EQ(writer.wait(), -SIGABRT);
}

TEST_F(AttributeGolden, AnyByteButZeroReadsAsTrue)
{
    read(records::model(Attributes, {records::attribute("", 0, {records::boolValue(2)}, {})}));
    expectWrittenAs(
        records::model(Attributes, {records::attribute("", 0, {records::boolValue(1)}, {})}));
}

class ReportGolden : public ProductStream
{
protected:
    static void make(char const * text, int entityType, int entryType)
    {
        HtmlLoggerEntry::create(text, static_cast<HtmlLoggerEntry::EntityType>(entityType),
                                static_cast<HtmlLoggerEntry::EntryType>(entryType));
    }
};

TEST_F(ReportGolden, EntriesStandInTheOrderOfTheirListWithTheirNumbersUntouched)
{
    make("<b>bold</b>", 18, 2);
    make("", -1, 77);
    make("a", 35, INT_MIN);
    ByteString first;
    first.i32(11).raw({'<', 'b', '>', 'b', 'o', 'l', 'd', '<', '/', 'b', '>'}).i32(18).i32(2);
    ASSERT_EQ(first.bytes().size(), 12U + 11);
    expectTravelsAs(records::model(ReportEntries, {first, records::reportEntry("", -1, 77),
                                                   records::reportEntry("a", 35, INT_MIN)}));
    ASSERT_EQ(currentSubPool().m_LoggerEntries.size(), 3U);
    EXPECT_STREQ(currentSubPool().m_LoggerEntries[0]->getText(), "<b>bold</b>");
    EXPECT_EQ(currentSubPool().m_LoggerEntries[0]->getEntityType(), HtmlLoggerEntry::Face);
}

TEST_F(ReportGolden, EntriesAreAddedBehindThoseThatAreThere)
{
    make("old", 1, 0);
    read(records::model(ReportEntries, {records::reportEntry("new", 2, 1)}));
    expectWrittenAs(records::model(
        ReportEntries, {records::reportEntry("old", 1, 0), records::reportEntry("new", 2, 1)}));
}

TEST_F(ReportGolden, ALogEntryOfTypeFiveDoesNotTravel)
{
    cad::ILoggerPolicy & log = *currentSubPool()._logger();
    for (int list = 1; list <= 6; ++list)
        log.addEntry(std::to_string(list).c_str(), list, cad::ILoggerPolicy::ErrorLine, true);
    Bytes const bytes = records::withLog(records::model({}), {{{records::logEntry("1", 2, 1)},
                                                               {records::logEntry("2", 2, 1)},
                                                               {records::logEntry("3", 2, 1)},
                                                               {records::logEntry("4", 2, 1)},
                                                               {records::logEntry("6", 2, 1)}}});
    ASSERT_EQ(bytes.size(), 108U + 5 * (9 + 1));
    expectTravelsAs(bytes);
    for (int list = 1; list <= 6; ++list)
        EXPECT_EQ(currentSubPool()._logger()->hasEntryError(list), list != 5) << list;
}

TEST_F(ReportGolden, AnInactiveLogHasFiveCountsOfZero)
{
    currentSubPool()._logger()->addEntry("gone", 1);
    currentSubPool().inactiveLogger();
    currentSubPool()._logger()->addEntry("swallowed", 1);
    expectTravelsAs(Bytes(108, 0));
}

} // namespace
} // namespace transl_tk
