// What does a boundary representation cost, made, sized, written, read and cleared, beside one
// memcpy of its bytes, beside the bare calls that make it, and beside another library's files?

#include "model_questions.h"
#include "shape_format.h"
#include "topology_models.h"

namespace {

struct Net
{
    static void prepare(int size) { bench::quadNet(size); }
    static void create(int size) { bench::createQuadNet(size); }
    static double elements(int size) { return bench::quadNet(size).faces(); }
};

using Topology = bench::ModelQuestions<Net>;

constexpr char const * ShapeFile = "/dev/shm/keld_bench_shape.bin";

bool hasShapes(benchmark::State & state)
{
    if (!bench::ShapeFormat::IsThere)
        state.SkipWithError("Open CASCADE was not there when this was built: not measured");
    return bench::ShapeFormat::IsThere;
}

void WriteBinTools(benchmark::State & state)
{
    if (!hasShapes(state))
        return;
    bench::ShapeFormat const shape(bench::quadNet(Topology::size(state)));
    for ([[maybe_unused]] auto iteration : state) {
        ::unlink(ShapeFile);
        bool written = false;
        bench::timed(state, [&] { written = shape.write(ShapeFile); });
        if (!written)
            state.SkipWithError("the file could not be written");
    }
    ::unlink(ShapeFile);
    Topology::done(state);
}

void ReadBinTools(benchmark::State & state)
{
    if (!hasShapes(state))
        return;
    bench::QuadNet const & net = bench::quadNet(Topology::size(state));
    bench::ShapeFormat(net).write(ShapeFile);
    for ([[maybe_unused]] auto iteration : state) {
        bench::ShapeFormat shape;
        bench::timed(state, [&] { shape.read(ShapeFile); });
        if (shape.faces() != net.faces())
            state.SkipWithError("another shape came back");
    }
    ::unlink(ShapeFile);
    Topology::done(state);
}

void FirstReadBinTools(benchmark::State & state)
{
    if (!hasShapes(state))
        return;
    bench::inFreshProcess([&] {
        bench::ShapeFormat(bench::quadNet(Topology::size(state))).write(ShapeFile);
        return 0.0;
    });
    for ([[maybe_unused]] auto iteration : state)
        bench::setTime(state, bench::secondsOfFirst([] {
                           // The shape's end is not part of the reading.
                           (new bench::ShapeFormat)->read(ShapeFile);
                       }));
    ::unlink(ShapeFile);
    Topology::done(state);
}

constexpr int Faces = 100000;

#define KELD_BENCH(question)                                                                       \
    BENCHMARK(question)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7)
#define KELD_GROWING_BENCH(question)                                                               \
    KELD_BENCH(Topology::question)                                                                 \
        ->Name("Topology/" #question)                                                              \
        ->Arg(Faces / 10)                                                                          \
        ->Arg(Faces)                                                                               \
        ->Arg(10 * Faces)

KELD_GROWING_BENCH(FirstBuild);
KELD_GROWING_BENCH(FirstRead);
KELD_BENCH(FirstReadBinTools)->Name("Topology/FirstReadBinTools")->Arg(Faces);
KELD_GROWING_BENCH(Build);
KELD_GROWING_BENCH(Size);
KELD_GROWING_BENCH(WriteMemcpy);
KELD_GROWING_BENCH(Write);
KELD_BENCH(WriteBinTools)->Name("Topology/WriteBinTools")->Arg(Faces);
KELD_GROWING_BENCH(Read);
KELD_BENCH(ReadBinTools)->Name("Topology/ReadBinTools")->Arg(Faces);
KELD_GROWING_BENCH(Clear);

} // namespace
