// What does a large mesh cost on its way through a segment, beside one memcpy of its bytes?

#include "model_questions.h"
#include "topology_models.h"

namespace {

struct Grid
{
    static void prepare(int size) { bench::triangleGrid(size); }
    static void create(int size) { bench::createTriangleGrid(size); }
    static double elements(int size) { return size; }
};

using Facets = bench::ModelQuestions<Grid>;

constexpr int Triangles = 10000000;

#define KELD_BENCH(question)                                                                       \
    BENCHMARK(Facets::question)                                                                    \
        ->Name("Facets/" #question)                                                                \
        ->UseManualTime()                                                                          \
        ->Unit(benchmark::kMillisecond)                                                            \
        ->Iterations(7)                                                                            \
        ->Arg(Triangles / 10)                                                                      \
        ->Arg(Triangles)                                                                           \
        ->Arg(10 * Triangles)

KELD_BENCH(FirstBuild);
KELD_BENCH(FirstReadMemcpy);
KELD_BENCH(FirstRead);
KELD_BENCH(Size);
KELD_BENCH(WriteMemcpy);
KELD_BENCH(Write);
KELD_BENCH(Clear);

} // namespace
