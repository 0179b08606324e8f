// What does a model's way through a segment cost, beside one memcpy of its bytes and beside the
// bare calls that make it?

#include "fresh_process.h"
#include "stopwatch.h"

#include <keld-common/file_mapping.h>
#include <keld-transl/exchange/shared_mem.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/process/server.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using bench::peakOf;
using bench::secondsOfFirst;
using bench::timed;
using bench::Writer;
using namespace transl_tk;

constexpr int Count = 5000000;
char const * const SegmentName = "bench exchange";

struct Values
{
    int id;
    double x, y, z;
};

std::vector<Values> const & values()
{
    static std::vector<Values> const list = [] {
        std::mt19937_64 random(1);
        std::uniform_real_distribution<double> coordinate(-1000, 1000);
        std::vector<Values> made(Count);
        for (int i = 0; i < Count; ++i)
            made[static_cast<std::size_t>(i)] = {i + 1, coordinate(random), coordinate(random),
                                                 coordinate(random)};
        return made;
    }();
    return list;
}

void createAll()
{
    for (Values const & v : values())
        Point3D::create(v.id, v.x, v.y, v.z);
}

void createFromIds()
{
    for (int id = 1; id <= Count; ++id)
        Point3D::create(id, id, 2.0 * id, 3.0 * id);
}

void setBytes(benchmark::State & state, long long size)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * size);
}

/// The yardstick of writing: the same bytes, ready in memory, into a fresh segment.
void WriteMemcpy(benchmark::State & state)
{
    Pool::construct("bench");
    createAll();
    long long const size = Server::writeSharedMem(SegmentName);
    SharedMem source(SegmentName, 0, false);
    source.map();
    std::vector<char> const bytes(static_cast<char *>(source.m_Base),
                                  static_cast<char *>(source.m_Base) + size);
    source.unmap();
    Server::unmapSharedMemory(true);
    Pool::destruct();
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

void Write(benchmark::State & state)
{
    Pool::construct("bench");
    createAll();
    long long size = 0;
    for ([[maybe_unused]] auto iteration : state) {
        timed(state, [&] { size = Server::writeSharedMem(SegmentName); });
        Server::unmapSharedMemory(true);
    }
    Pool::destruct();
    setBytes(state, size);
}

/// The yardstick of reading: the bare calls with the same ids and values.
void ReadBareCreate(benchmark::State & state)
{
    values();
    for ([[maybe_unused]] auto iteration : state) {
        Pool::construct("bench");
        timed(state, [] { createAll(); });
        Pool::destruct();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * Count);
}

void Read(benchmark::State & state)
{
    Pool::construct("source");
    createAll();
    long long const size = Server::writeSharedMem(SegmentName);
    SharedMem keep(SegmentName, 0, false);
    keep.map();
    Server::unmapSharedMemory(true);
    Pool::destruct();
    for ([[maybe_unused]] auto iteration : state) {
        Pool::construct("bench");
        timed(state, [&] { Server::readSharedMem(SegmentName, size); });
        Pool::destruct();
    }
    keep.unmap();
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * Count);
}

void Size(benchmark::State & state)
{
    Pool::construct("bench");
    createAll();
    for ([[maybe_unused]] auto iteration : state)
        timed(state, [] { benchmark::DoNotOptimize(Pool::getInstance()->getSize()); });
    Pool::destruct();
}

/// The yardstick of a first reading.
void FirstReadBareCreate(benchmark::State & state)
{
    values();
    for ([[maybe_unused]] auto iteration : state)
        bench::setTime(state, secondsOfFirst(createAll));
}

void FirstRead(benchmark::State & state)
{
    Writer const writer(SegmentName, createFromIds);
    for ([[maybe_unused]] auto iteration : state)
        bench::setTime(state,
                       secondsOfFirst([&] { Server::readSharedMem(SegmentName, writer.size()); }));
}

/// Peak memory of a reader, and of a process that makes the same model with the bare calls from
/// values that it computes; the segment counts with the reader's views.
void ReaderMemory(benchmark::State & state)
{
    Writer const writer(SegmentName, createFromIds);
    for ([[maybe_unused]] auto iteration : state)
        timed(state, [&] {
            double const model = peakOf([] {
                Pool::construct("bench");
                createFromIds();
            });
            double const reader = peakOf([&] {
                Pool::construct("bench");
                Server::readSharedMem(SegmentName, writer.size());
            });
            constexpr double Mebibyte = 1024.0 * 1024.0;
            auto const size = static_cast<double>(writer.size());
            state.counters["model_MiB"] = model / Mebibyte;
            state.counters["segment_MiB"] = size / Mebibyte;
            state.counters["reader_MiB"] = reader / Mebibyte;
            state.counters["over_MiB"] = (reader - model - size) / Mebibyte;
        });
}

#define KELD_BENCH(question)                                                                       \
    BENCHMARK(question)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7)

BENCHMARK(ReaderMemory)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);
KELD_BENCH(FirstReadBareCreate);
KELD_BENCH(FirstRead);
KELD_BENCH(WriteMemcpy);
KELD_BENCH(Write);
KELD_BENCH(ReadBareCreate);
KELD_BENCH(Read);
KELD_BENCH(Size);

} // namespace
