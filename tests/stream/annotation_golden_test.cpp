#include "stream/product_stream.h"

namespace transl_tk {
namespace {

using namespace tests;

class AnnotationGolden : public ProductStream
{
protected:
    static Annotation * make(int id, int pointCount, double const * points, char const * first,
                             char const * second)
    {
        double const triples[4][3] = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}};
        int const ints[4][3] = {{13, 14, 15}, {16, 17, 18}, {19, 20, 21}, {22, 23, 24}};
        return Annotation::create(id, triples[0], triples[1], triples[2], triples[3], pointCount,
                                  points, ints[0], ints[1], ints[2], ints[3], 25, 26, 27, 28, -29,
                                  first, second);
    }

    /// What stands before the points and behind them, with no points counted.
    static ByteString triples()
    {
        return ByteString().f64({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    }
    static ByteString numbers()
    {
        ByteString record;
        for (int number = 13; number <= 28; ++number)
            record.i32(number);
        return record.i32(-29);
    }
};

TEST_F(AnnotationGolden, EveryFieldStandsInItsPlace)
{
    double const points[6] = {0.5, 1.5, 2.5, 3.5, 4.5, 5.5};
    make(7, 2, points, "first text", "second");
    ByteString record;
    record.i32(7).raw(triples()).i32(2).f64({0.5, 1.5, 2.5, 3.5, 4.5, 5.5}).raw(numbers());
    record.text("first text").text("second");
    ASSERT_EQ(record.bytes().size(), 180U + 2 * 24 + 10 + 6);
    expectTravelsAs(records::model(Annotations, {record}));

    auto * const read = entity<Annotation>(&SubPool::m_Annotations, 7);
    double triple[3];
    read->getThirdTriple(triple[0], triple[1], triple[2]);
    EXPECT_EQ(std::to_array(triple), (Triple{7, 8, 9}));
    int ints[3];
    read->getSecondInts(ints[0], ints[1], ints[2]);
    EXPECT_EQ(std::to_array(ints), (std::array<int, 3>{16, 17, 18}));
    EXPECT_EQ(read->getFifthNumber(), -29);
    EXPECT_EQ(read->getNumPoints(), 2U);
    EXPECT_EQ(read->getPoints()[5], 5.5);
    EXPECT_STREQ(read->getSecondText(), "second");
}

TEST_F(AnnotationGolden, WithoutPointsAndTextsItTakes180Bytes)
{
    make(1, 0, nullptr, "", "");
    ByteString record;
    record.i32(1).raw(triples()).i32(0).raw(numbers()).text("").text("");
    ASSERT_EQ(record.bytes().size(), 180U);
    expectTravelsAs(records::model(Annotations, {record}));
    EXPECT_EQ(entity<Annotation>(&SubPool::m_Annotations, 1)->getPoints(), nullptr);
}

TEST_F(AnnotationGolden, AnnotationsStandInAscendingOrderOfIds)
{
    for (int const id : {5, -1, 3})
        makeAnnotation(id);
    expectTravelsAs(records::model(
        Annotations, {records::annotation(-1), records::annotation(3), records::annotation(5)}));
}

TEST_F(AnnotationGolden, ANegativeCountOfPointsReadsAsNone)
{
    ByteString record;
    record.i32(1).raw(triples()).i32(-3).raw(numbers()).text("a").text("b");
    read(records::model(Annotations, {record}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(entity<Annotation>(&SubPool::m_Annotations, 1)->getNumPoints(), 0U);
}

TEST_F(AnnotationGolden, OneWhoseIdIsTakenIsPassedOver)
{
    make(1, 0, nullptr, "kept", "");
    read(records::model(Annotations, {records::annotation(1), records::annotation(2)}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_STREQ(entity<Annotation>(&SubPool::m_Annotations, 1)->getFirstText(), "kept");
    EXPECT_NE(entity<Annotation>(&SubPool::m_Annotations, 2), nullptr);
}

} // namespace
} // namespace transl_tk
