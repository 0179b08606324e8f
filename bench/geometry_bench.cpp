// What does exact geometry's way through a segment cost, beside one memcpy of its bytes, beside the
// bare calls that make it, and beside two serialization libraries?

#include "fresh_process.h"
#include "geometry_models.h"
#include "spline_formats.h"
#include "stopwatch.h"

#include <keld-transl/geom/bspline_surface.h>
#include <keld-transl/topology/surface.h>

#include <cstring>
#include <vector>

namespace {

using bench::secondsOfFirst;
using bench::SplineValues;
using bench::timed;
using bench::Writer;
using namespace transl_tk;

char const * const SegmentName = "bench geometry";

using Create = void();

void setBytes(benchmark::State & state, long long size)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * size);
}

/// The yardstick of writing: the same bytes, ready in memory, into a fresh segment.
template <Create & create> void WriteMemcpy(benchmark::State & state)
{
    std::vector<char> bytes;
    {
        Writer const writer(SegmentName, create);
        SharedMem source(SegmentName, 0, false);
        source.map();
        bytes.assign(static_cast<char *>(source.m_Base),
                     static_cast<char *>(source.m_Base) + writer.size());
        source.unmap();
    }
    auto const size = static_cast<long long>(bytes.size());
    for ([[maybe_unused]] auto iteration : state) {
        SharedMem segment(SegmentName, size, true);
        timed(state, [&] {
            segment.map();
            std::memcpy(segment.m_Base, bytes.data(), bytes.size());
        });
        segment.unmap();
    }
    setBytes(state, size);
}

template <Create & create> void Write(benchmark::State & state)
{
    Pool::construct("bench");
    create();
    long long size = 0;
    for ([[maybe_unused]] auto iteration : state) {
        timed(state, [&] { size = Server::writeSharedMem(SegmentName); });
        Server::unmapSharedMemory(true);
    }
    Pool::destruct();
    setBytes(state, size);
}

/// The yardstick of reading: the bare calls with the same ids and values.
template <Create & create> void ReadBareCreate(benchmark::State & state)
{
    for ([[maybe_unused]] auto iteration : state) {
        Pool::construct("bench");
        timed(state, create);
        Pool::destruct();
    }
}

template <Create & create> void Read(benchmark::State & state)
{
    Writer const writer(SegmentName, create);
    for ([[maybe_unused]] auto iteration : state) {
        Pool::construct("bench");
        timed(state, [&] { Server::readSharedMem(SegmentName, writer.size()); });
        Pool::destruct();
        Server::unmapSharedMemory(true);
    }
}

template <Create & create> void FirstReadBareCreate(benchmark::State & state)
{
    bench::splineValues();
    bench::curveValues();
    for ([[maybe_unused]] auto iteration : state)
        bench::setTime(state, secondsOfFirst(create));
}

template <Create & create> void FirstRead(benchmark::State & state)
{
    Writer const writer(SegmentName, create);
    for ([[maybe_unused]] auto iteration : state)
        bench::setTime(state,
                       secondsOfFirst([&] { Server::readSharedMem(SegmentName, writer.size()); }));
}

/// Writing in another format: from its own objects, which hold the spline model, into a fresh
/// segment.
template <class Format> void FormatWrite(benchmark::State & state)
{
    auto const objects = Format::objects();
    auto const size = static_cast<long long>(Format::segmentSize(objects));
    for ([[maybe_unused]] auto iteration : state) {
        SharedMem segment(SegmentName, size, true);
        timed(state, [&] {
            segment.map();
            Format::write(objects, segment.m_Base, static_cast<std::size_t>(size));
        });
        segment.unmap();
    }
    setBytes(state, size);
}

/// Rebuilding in another format: its objects from a segment that is opened for it, as by
/// `readSharedMem`.
template <class Format> void FormatRead(benchmark::State & state)
{
    auto const source = Format::objects();
    auto const size = static_cast<long long>(Format::segmentSize(source));
    SharedMem written(SegmentName, size, true);
    written.map();
    Format::write(source, written.m_Base, static_cast<std::size_t>(size));
    auto const readAll = [&] {
        SharedMem segment(SegmentName, size, false);
        segment.map();
        auto objects = Format::read(segment.m_Base, static_cast<std::size_t>(size));
        segment.unmap();
        return objects;
    };
    if (!Format::equal(readAll(), source))
        state.SkipWithError("other values came back");
    for ([[maybe_unused]] auto iteration : state) {
        decltype(readAll()) objects;
        timed(state, [&] { objects = readAll(); });
    }
    written.unmap();
}

template <class Format> void FormatFirstRead(benchmark::State & state)
{
    auto const source = Format::objects();
    auto const size = static_cast<long long>(Format::segmentSize(source));
    SharedMem written(SegmentName, size, true);
    written.map();
    Format::write(source, written.m_Base, static_cast<std::size_t>(size));
    for ([[maybe_unused]] auto iteration : state)
        bench::setTime(state, secondsOfFirst([&] {
                           SharedMem segment(SegmentName, size, false);
                           segment.map();
                           // The objects' end is not part of the reading, and the process ends with
                           // them.
                           new auto(Format::read(segment.m_Base, static_cast<std::size_t>(size)));
                       }));
    written.unmap();
}

/// What the getters that fill arrays fill for one surface.
struct Arrays
{
    double points[3 * SplineValues::PointCount];
    double weights[SplineValues::PointCount];
    double knots[2][SplineValues::KnotCount];
    int multiplicities[2][SplineValues::KnotCount];
};

void setFilled(benchmark::State & state)
{
    setBytes(state, static_cast<long long>(sizeof(Arrays)) * bench::SplineCount);
}

/// The yardstick of the getters: the same bytes of one surface after the other.
void FillMemcpy(benchmark::State & state)
{
    Arrays arrays;
    for ([[maybe_unused]] auto iteration : state)
        timed(state, [&] {
            for (SplineValues const & v : bench::splineValues()) {
                std::memcpy(arrays.points, v.points, sizeof v.points);
                std::memcpy(arrays.weights, v.weights, sizeof v.weights);
                std::memcpy(arrays.knots, v.knotsU, sizeof arrays.knots);
                std::memcpy(arrays.multiplicities, v.multiplicitiesU, sizeof arrays.multiplicities);
                benchmark::DoNotOptimize(&arrays);
                benchmark::ClobberMemory();
            }
        });
    setFilled(state);
}

void FillGetters(benchmark::State & state)
{
    Pool::construct("bench");
    bench::createSplines();
    std::vector<geom::BSplineSurface *> surfaces;
    Pool::getInstance()->currentSubPool()->m_Surfaces.m_Entities.forEach([&](int, Base * entity) {
        surfaces.push_back(
            static_cast<geom::BSplineSurface *>(static_cast<Surface *>(entity)->getSurface()));
    });
    Arrays arrays;
    for ([[maybe_unused]] auto iteration : state)
        timed(state, [&] {
            for (geom::BSplineSurface * const surface : surfaces) {
                surface->getControlPoints(arrays.points);
                surface->getWeights(arrays.weights);
                surface->getKnotsU(arrays.knots[0], arrays.multiplicities[0]);
                surface->getKnotsV(arrays.knots[1], arrays.multiplicities[1]);
                benchmark::DoNotOptimize(&arrays);
                benchmark::ClobberMemory();
            }
        });
    Pool::destruct();
    setFilled(state);
}

#define KELD_BENCH(...)                                                                            \
    BENCHMARK(__VA_ARGS__)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7)

KELD_BENCH(FirstReadBareCreate<bench::createSplines>)->Name("Splines/FirstReadBareCreate");
KELD_BENCH(FirstRead<bench::createSplines>)->Name("Splines/FirstRead");
KELD_BENCH(FormatFirstRead<bench::FlatFormat>)->Name("Splines/FirstReadFlatBuffers");
KELD_BENCH(FormatFirstRead<bench::CapnFormat>)->Name("Splines/FirstReadCapnProto");
KELD_BENCH(FirstReadBareCreate<bench::createCurves>)->Name("LinesAndCircles/FirstReadBareCreate");
KELD_BENCH(FirstRead<bench::createCurves>)->Name("LinesAndCircles/FirstRead");

KELD_BENCH(WriteMemcpy<bench::createSplines>)->Name("Splines/WriteMemcpy");
KELD_BENCH(Write<bench::createSplines>)->Name("Splines/Write");
KELD_BENCH(FormatWrite<bench::FlatFormat>)->Name("Splines/WriteFlatBuffers");
KELD_BENCH(FormatWrite<bench::CapnFormat>)->Name("Splines/WriteCapnProto");
KELD_BENCH(WriteMemcpy<bench::createCurves>)->Name("LinesAndCircles/WriteMemcpy");
KELD_BENCH(Write<bench::createCurves>)->Name("LinesAndCircles/Write");

KELD_BENCH(ReadBareCreate<bench::createSplines>)->Name("Splines/ReadBareCreate");
KELD_BENCH(Read<bench::createSplines>)->Name("Splines/Read");
KELD_BENCH(FormatRead<bench::FlatFormat>)->Name("Splines/ReadFlatBuffers");
KELD_BENCH(FormatRead<bench::CapnFormat>)->Name("Splines/ReadCapnProto");
KELD_BENCH(ReadBareCreate<bench::createCurves>)->Name("LinesAndCircles/ReadBareCreate");
KELD_BENCH(Read<bench::createCurves>)->Name("LinesAndCircles/Read");

KELD_BENCH(FillMemcpy)->Name("Splines/FillMemcpy");
KELD_BENCH(FillGetters)->Name("Splines/FillGetters");

} // namespace
