#ifndef KELD_BENCH_MODEL_QUESTIONS_H
#define KELD_BENCH_MODEL_QUESTIONS_H

#include "fresh_process.h"
#include "stopwatch.h"

#include <cstring>
#include <vector>

namespace bench {

/// What one model of a given size costs on its way through a segment.
///
/// A `Model` makes its model in the current sub-pool (`create(size)`), prepares the values for that
/// (`prepare(size)`), and counts its elements (`elements(size)`), by which the growth of the cost
/// is judged: the counter "least_ns_each".
template <class Model> struct ModelQuestions
{
    static constexpr char const * SegmentName = "bench model";

    static int size(benchmark::State & state) { return static_cast<int>(state.range(0)); }

    static void done(benchmark::State & state, long long bytes = 0)
    {
        state.counters["least_ns_each"] =
            1e6 * state.counters["least_ms"].value / Model::elements(size(state));
        if (bytes != 0)
            state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * bytes);
    }

    /// The bytes of the model's segment.
    static std::vector<char> streamOf(int size)
    {
        Writer const writer(SegmentName, [&] { Model::create(size); });
        transl_tk::SharedMem source(SegmentName, 0, false);
        source.map();
        auto const * const base = static_cast<char const *>(source.m_Base);
        std::vector<char> bytes(base, base + writer.size());
        source.unmap();
        return bytes;
    }

    static void Build(benchmark::State & state)
    {
        Model::prepare(size(state));
        for ([[maybe_unused]] auto iteration : state) {
            transl_tk::Pool::construct("bench");
            timed(state, [&] { Model::create(size(state)); });
            transl_tk::Pool::destruct();
        }
        done(state);
    }

    static void Size(benchmark::State & state)
    {
        transl_tk::Pool::construct("bench");
        Model::create(size(state));
        for ([[maybe_unused]] auto iteration : state)
            timed(state,
                  [] { benchmark::DoNotOptimize(transl_tk::Pool::getInstance()->getSize()); });
        transl_tk::Pool::destruct();
        done(state);
    }

    static void Clear(benchmark::State & state)
    {
        for ([[maybe_unused]] auto iteration : state) {
            transl_tk::Pool::construct("bench");
            Model::create(size(state));
            timed(state, [] { transl_tk::Pool::getInstance()->currentSubPool()->clear(); });
            transl_tk::Pool::destruct();
        }
        done(state);
    }

    /// The yardstick of writing: the same bytes, ready in memory, into a fresh segment.
    static void WriteMemcpy(benchmark::State & state)
    {
        auto const bytes = streamOf(size(state));
        auto const length = static_cast<long long>(bytes.size());
        for ([[maybe_unused]] auto iteration : state) {
            transl_tk::SharedMem segment(SegmentName, length, true);
            timed(state, [&] {
                segment.map();
                std::memcpy(segment.m_Base, bytes.data(), bytes.size());
            });
            segment.unmap();
        }
        done(state, length);
    }

    static void Write(benchmark::State & state)
    {
        transl_tk::Pool::construct("bench");
        Model::create(size(state));
        long long length = 0;
        for ([[maybe_unused]] auto iteration : state) {
            timed(state, [&] { length = transl_tk::Server::writeSharedMem(SegmentName); });
            transl_tk::Server::unmapSharedMemory(true);
        }
        transl_tk::Pool::destruct();
        done(state, length);
    }

    /// A yardstick of a first reading: the bytes of the segment into fresh memory.
    static void FirstReadMemcpy(benchmark::State & state)
    {
        Writer const writer(SegmentName, [&] { Model::create(size(state)); });
        auto const length = static_cast<std::size_t>(writer.size());
        for ([[maybe_unused]] auto iteration : state)
            setTime(state, secondsOfFirst([&] {
                        transl_tk::SharedMem segment(SegmentName, writer.size(), false);
                        segment.map();
                        // The end of the copy is not part of the reading.
                        char * const copy = new char[length];
                        std::memcpy(copy, segment.m_Base, length);
                        benchmark::DoNotOptimize(copy);
                        segment.unmap();
                    }));
        done(state, writer.size());
    }

    static void Read(benchmark::State & state)
    {
        Writer const writer(SegmentName, [&] { Model::create(size(state)); });
        for ([[maybe_unused]] auto iteration : state) {
            transl_tk::Pool::construct("bench");
            timed(state, [&] { transl_tk::Server::readSharedMem(SegmentName, writer.size()); });
            transl_tk::Pool::destruct();
        }
        done(state, writer.size());
    }

    /// The yardstick of a first reading: the bare calls with the same ids and values in a process
    /// that has held no model before.
    static void FirstBuild(benchmark::State & state)
    {
        Model::prepare(size(state));
        for ([[maybe_unused]] auto iteration : state)
            setTime(state, secondsOfFirst([&] { Model::create(size(state)); }));
        done(state);
    }

    static void FirstRead(benchmark::State & state)
    {
        Writer const writer(SegmentName, [&] { Model::create(size(state)); });
        for ([[maybe_unused]] auto iteration : state)
            setTime(state, secondsOfFirst([&] {
                        transl_tk::Server::readSharedMem(SegmentName, writer.size());
                    }));
        done(state, writer.size());
    }
};

} // namespace bench

#endif
