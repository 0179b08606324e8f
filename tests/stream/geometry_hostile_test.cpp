#include "stream/geometry_stream.h"
#include "support/small_stack.h"

#include <keld-transl/geom/line_strip.h>
#include <keld-transl/geom/offset_surface.h>
#include <keld-transl/geom/plane.h>

#include <climits>
#include <functional>
#include <random>

namespace transl_tk {
namespace {

using namespace tests;

class HostileGeometry : public GeometryStream
{
protected:
    /// Something of every section that the streams here fill, with an id that they do not use.
    HostileGeometry()
    {
        double const third[3] = {0, 0, 1};
        SpotWeld::create(100, 1, 2, 3);
        CartesianCoord::create(100, L, A, B, third);
        Curve3D::create(100, geom::LineStrip::create(ofCurve()));
        UVCurve::create(100, nullptr);
        Surface::create(100, nullptr);
        m_Before = Pool::getInstance()->getSize();
    }

    void expectUnchanged() { EXPECT_EQ(Pool::getInstance()->getSize(), m_Before); }

    /// Reads `stream` and expects that it is refused for `reason` and that the model is as it was.
    void expectRefused(Bytes const & stream, std::string const & reason)
    {
        read(stream);
        EXPECT_NE(Server::exchangeFailure().find(reason), std::string::npos)
            << Server::exchangeFailure();
        expectUnchanged();
    }

    long long m_Before = 0;
};

/// A sound stream with every kind of geometry in it.
Bytes everyKind()
{
    ByteString stream;
    stream.i32(0).i32(0);
    stream.i32(1).i32(1).f64({1, 2, 3}).i32(2).text("ab").text("c");
    stream.i32(1).i32(1).raw(records::placement());
    int id = 0;
    stream.i32(static_cast<int>(records::everyCurve().size()));
    for (ByteString const & curve : records::everyCurve())
        stream.i32(++id).raw(curve);
    stream.i32(3).i32(1).i32(3).raw(records::uvCurve());
    stream.i32(2).i32(3).raw(records::rationalUVCurve());
    stream.i32(3).i32(0);
    stream.i32(static_cast<int>(records::everySurface().size()));
    for (ByteString const & surface : records::everySurface())
        stream.i32(++id).raw(surface);
    return stream.zeros(std::size_t{20} * 4).bytes();
}

TEST_F(HostileGeometry, AStreamWithEveryKindIsRefusedWhereverItIsCut)
{
    Bytes const whole = everyKind();
    for (std::size_t size = 1; size < whole.size() && !HasFailure(); ++size)
        expectRefused(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)),
                      "The model stream is not sound: section ");
    read(whole);
    EXPECT_EQ(Server::exchangeFailure(), "");
}

TEST_F(HostileGeometry, SentenceNamesSectionRecordAndByte)
{
    // Two lines take 4 + 68 bytes each; the last component of the second one is missing.
    Bytes stream = records::model(
        Curves, {records::carried(1, records::line()), records::carried(2, records::line())});
    stream.resize(20 + 2 * 72 - 1);
    expectRefused(stream, "The model stream is not sound: section 5 (3D curves), record 2, byte "
                          "116: a field of 48 bytes runs past the end, 47 bytes are left.");
    Bytes surface = records::model(Surfaces, {records::carried(1, records::plane())});
    surface.resize(28 + 4 + 4 + 24 + 16 + 95);
    expectRefused(surface, "section 7 (surfaces), record 1, byte 76: a field of 96 bytes runs past "
                           "the end, 95 bytes are left.");
}

TEST_F(HostileGeometry, CountsThatCannotBeAreRefused)
{
    auto const most = [](ByteString record) { return record.i32(INT_MAX); };
    auto const needs = [](long long least) {
        return "a count of 2147483647 needs at least " + std::to_string(least * INT_MAX) + " bytes";
    };
    auto const curve = [&](ByteString const & start, long long least) {
        expectRefused(records::model(Curves, {records::carried(1, most(start))}), needs(least));
    };
    ByteString const start = records::ofCurve();
    curve(ByteString().i32(1).i32(0), 8);
    curve(ByteString().i32(6).raw(start), 24);
    curve(ByteString().i32(7).raw(start), 4);
    curve(ByteString().i32(2).raw(start).i32(2).zeros(3), 24);
    curve(ByteString().i32(2).raw(start).i32(2).zeros(3).i32(0), 12);
    expectRefused(records::model(UVCurves, {most(ByteString().i32(1).i32(3).i32(2).zeros(3))}),
                  needs(16));
    expectRefused(records::model(SpotWelds, {most(ByteString().i32(1).zeros(24))}), needs(4));
    ByteString const surface = ByteString().i32(1).i32(2).raw(records::ofSurface()).u8(0).u8(0);
    expectRefused(
        records::model(Surfaces, {ByteString(surface).i32(INT_MAX).i32(INT_MAX).zeros(64)}),
        "a count of 4611686014132420609 needs at least");
    expectRefused(
        records::model(Surfaces, {most(ByteString(surface).i32(0).i32(0).i32(2).zeros(2))}),
        needs(12));
}

TEST_F(HostileGeometry, WeightsThatAreNotThereAreRefused)
{
    ByteString record;
    record.i32(1).i32(2).i32(0).i32(0).i32(2).u8(0).u8(0).u8(1).i32(20).zeros(20 * 24);
    expectRefused(records::model(Curves, {record}), "a count of 20 needs at least 160 bytes");
}

TEST_F(HostileGeometry, ANegativeProductOfPointCountsIsRefused)
{
    ByteString record;
    record.i32(1).i32(2).raw(records::ofSurface()).u8(0).u8(0).i32(-2).i32(3);
    expectRefused(records::model(Surfaces, {record}),
                  "section 7 (surfaces), record 1, byte 86: there cannot be -2 by 3 control "
                  "points.");
}

TEST_F(HostileGeometry, NegativeCountsReadAsNone)
{
    currentSubPool().clear();
    ByteString spline;
    spline.i32(2).i32(0).i32(-1).i32(3).zeros(3).i32(-1).i32(-1);
    read(records::model(Curves,
                        {records::carried(1, spline),
                         records::carried(2, ByteString().i32(6).i32(0).i32(-1).i32(INT_MIN)),
                         records::carried(3, ByteString().i32(7).i32(0).i32(-1).i32(-1))}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(countOf(&SubPool::m_Curves3D), 3U);
    currentSubPool().clear();
    ByteString none;
    none.i32(2).i32(0).i32(0).i32(3).zeros(3).i32(0).i32(0);
    read(records::model(Curves, {records::carried(1, spline)}));
    expectWrittenAs(records::model(Curves, {records::carried(1, none)}));
}

TEST_F(HostileGeometry, UnknownTagsOfSurfacesReadAsNullAndTakeTheTagAlone)
{
    std::vector<ByteString> stream;
    int id = 0;
    for (int const tag : {INT_MIN, -1, 0, 1, 6, 13, INT_MAX})
        stream.push_back(records::carried(++id, records::tag(tag)));
    stream.push_back(records::carried(9, records::plane()));
    read(records::model(Surfaces, stream));
    EXPECT_EQ(Server::exchangeFailure(), "");
    for (; id > 0; --id)
        EXPECT_EQ(entity<Surface>(&SubPool::m_Surfaces, id)->getSurface(), nullptr);
    EXPECT_EQ(placementOf(surface<geom::Plane>()), Placed);
}

TEST_F(HostileGeometry, UnknownTagsOfCurvesReadAsNullAndTakeTheTagAlone)
{
    currentSubPool().clear();
    std::vector<ByteString> stream;
    int id = 0;
    for (int const tag : {INT_MIN, -1, 0, 4, 8, INT_MAX})
        stream.push_back(records::carried(++id, records::extrusion(records::tag(tag))));
    read(records::model(Surfaces, stream));
    EXPECT_EQ(Server::exchangeFailure(), "");
    stream.clear();
    for (int known = 1; known <= id; ++known)
        stream.push_back(records::carried(known, records::extrusion(records::tag(0))));
    expectWrittenAs(records::model(Surfaces, stream));
}

ByteString nestedComposites(int depth)
{
    ByteString record;
    for (int i = 1; i < depth; ++i)
        record.i32(7).i32(0).i32(0).i32(1);
    return record.i32(7).i32(0).i32(0).i32(0);
}

TEST_F(HostileGeometry, CompositesAreReadToADepthOf64)
{
    currentSubPool().clear();
    tests::onSmallStack(
        [] { read(records::model(Curves, {records::carried(1, nestedComposites(64))})); });
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(countOf(&SubPool::m_Curves3D), 1U);
}

TEST_F(HostileGeometry, DeeperCompositesAreRefused)
{
    for (int const depth : {65, 100000})
        expectRefused(records::model(Curves, {records::carried(1, nestedComposites(depth))}),
                      "composite curves are nested more than 64 deep");
}

constexpr int ManyOffsets = 100000;

Bytes nestedOffsets()
{
    ByteString record;
    for (int i = 0; i < ManyOffsets; ++i)
        record.i32(5).zeros(16);
    record.raw(records::plane());
    for (int i = 0; i < ManyOffsets; ++i)
        record.f64({static_cast<double>(i)});
    return records::model(Surfaces, {records::carried(9, record)});
}

TEST_F(HostileGeometry, AHundredThousandOffsetsAreReadWrittenAndFreedOnASmallStack)
{
    currentSubPool().clear();
    tests::onSmallStack([this] {
        Bytes const bytes = nestedOffsets();
        read(bytes);
        EXPECT_EQ(Server::exchangeFailure(), "");
        EXPECT_EQ(surface<geom::OffsetSurface>().getDistance(), ManyOffsets - 1);
        expectWrittenAs(bytes);
        currentSubPool().clear();
    });
}

TEST_F(HostileGeometry, AHundredThousandOffsetsThatAreCutAreFreedOnASmallStack)
{
    tests::onSmallStack([this] {
        Bytes bytes = nestedOffsets();
        bytes.resize(bytes.size() - std::size_t{20} * 4 - 1);
        expectRefused(bytes, "a field of 8 bytes runs past the end");
    });
}

TEST_F(HostileGeometry, ASpotWeldWhoseIdIsTakenStopsTheReading)
{
    expectRefused(records::model(SpotWelds, {ByteString().i32(1).zeros(24).i32(0),
                                             ByteString().i32(100).zeros(24).i32(1).text("name")}),
                  "section 3 (spot welds), record 2, byte 84: the id 100 is taken.");
}

TEST_F(HostileGeometry, CarriersWhoseIdsAreTakenAreSkipped)
{
    currentSubPool().clear();
    read(records::model(Curves, {records::carried(9, records::circle()),
                                 records::carried(9, records::composite()),
                                 records::carried(10, records::line())}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(records::model(
        Curves, {records::carried(9, records::circle()), records::carried(10, records::line())}));
    currentSubPool().clear();
    ByteString const offset = records::offset(records::plane(), 1);
    read(records::model(Surfaces,
                        {records::carried(9, offset),
                         records::carried(9, records::ruled(records::line(), records::circle())),
                         records::carried(9, offset), records::carried(10, records::plane())}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(records::model(
        Surfaces, {records::carried(9, offset), records::carried(10, records::plane())}));
    currentSubPool().clear();
    ByteString const uv = ByteString().i32(9).i32(3).raw(records::uvCurve());
    read(
        records::model(UVCurves, {uv, ByteString().i32(9).i32(3).raw(records::rationalUVCurve())}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(records::model(UVCurves, {uv}));
}

TEST_F(HostileGeometry, ACurveThatReadsAsNullMakesNoCarrier)
{
    read(records::model(Curves, {records::carried(1, records::tag(4))}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectUnchanged();
}

TEST_F(HostileGeometry, AnUnknownKindOfUVCurveIsNotReadAnyFurther)
{
    read(records::model(UVCurves, {ByteString().i32(1).i32(4), ByteString().i32(2).i32(0)}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectUnchanged();
}

TEST_F(HostileGeometry, NoRandomBytesHarmTheReader)
{
    std::mt19937 random(13);
    Bytes const sound = everyKind();
    for (int round = 0; round < 3000 && !HasFailure(); ++round) {
        Bytes stream = sound;
        for (unsigned flips = 1 + random() % 4; flips != 0; --flips)
            stream[random() % stream.size()] ^= static_cast<unsigned char>(1U << random() % 8);
        read(stream);
        if (!Server::exchangeFailure().empty()) {
            expectUnchanged();
            continue;
        }
        currentSubPool().clear();
        Surface::create(100, nullptr);
        m_Before = Pool::getInstance()->getSize();
    }
}

} // namespace
} // namespace transl_tk
