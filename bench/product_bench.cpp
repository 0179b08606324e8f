// What does product structure cost, made, sized, written, read, walked and cleared; what do
// attributes; and what do names that clash?

#include "model_questions.h"
#include "product_models.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/traverse_hierarchy.h>

#include <algorithm>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

using bench::timed;
using bench::Transforms;
using namespace transl_tk;

struct PlacedInstances
{
    static void prepare(int) {}
    static void create(int size) { bench::createInstances(size, Transforms::OneEach); }
    static double elements(int size) { return size; }
};

struct ManyAttributes
{
    static void prepare(int) {}
    static void create(int size) { bench::createAttributes(size); }
    static double elements(int size) { return size; }
};

using Instances = bench::ModelQuestions<PlacedInstances>;
using Attributes = bench::ModelQuestions<ManyAttributes>;

Assembly * root()
{
    return static_cast<Assembly *>(
        Pool::getInstance()->currentSubPool()->m_Hierarchies.m_Entities.lookup(bench::RootId));
}

bool count(Hierarchy *, void * nodes)
{
    ++*static_cast<int *>(nodes);
    return true;
}

void Walk(benchmark::State & state)
{
    Pool::construct("bench");
    PlacedInstances::create(Instances::size(state));
    TraverseHierarchy walk;
    walk.setPreActionCB(count);
    for ([[maybe_unused]] auto iteration : state) {
        int nodes = 0;
        timed(state, [&] { walk.traverse(root(), &nodes); });
        if (nodes <= Instances::size(state))
            state.SkipWithError("the walk missed nodes");
    }
    Pool::destruct();
    Instances::done(state);
}

/// Walking all attributes with what they hang on.
void WalkAttributes(benchmark::State & state)
{
    Pool::construct("bench");
    ManyAttributes::create(Attributes::size(state));
    for ([[maybe_unused]] auto iteration : state) {
        int entities = 0;
        timed(state, [&] {
            for (Attribute * const attribute : Pool::getInstance()->currentSubPool()->m_Attributes)
                attribute->forEachEntity(
                    [](Base *, void * found) {
                        ++*static_cast<int *>(found);
                        return true;
                    },
                    &entities);
        });
        if (entities != 2 * Attributes::size(state))
            state.SkipWithError("the walk missed entities");
    }
    Pool::destruct();
    Attributes::done(state);
}

/// Peak memory of a process that makes a model, over that of one that makes an empty one.
template <class Create> void setMemory(benchmark::State & state, Create create)
{
    int const size = Instances::size(state);
    for ([[maybe_unused]] auto iteration : state)
        timed(state, [&] {
            double const empty = bench::peakOf([] { Pool::construct("bench"); });
            double const full = bench::peakOf([&] {
                Pool::construct("bench");
                create(size);
            });
            state.counters["bytes_each"] = (full - empty) / size;
        });
}

/// The tables of pointers that the making uses count, some 8 bytes an instance.
void Memory(benchmark::State & state)
{
    setMemory(state, [](int size) { bench::createInstances(size, Transforms::OneEach); });
}

void MemoryWithoutTransforms(benchmark::State & state)
{
    setMemory(state, [](int size) { bench::createInstances(size, Transforms::None); });
}

void AttributeMemory(benchmark::State & state)
{
    setMemory(state, bench::createAttributes);
}

constexpr int Children = 100000;

/// The yardstick of walking many children.
void SortIntegers(benchmark::State & state)
{
    std::vector<int> integers(Children);
    std::mt19937 random(1);
    for (int & each : integers)
        each = static_cast<int>(random());
    for ([[maybe_unused]] auto iteration : state) {
        std::vector<int> sorted = integers;
        timed(state, [&] { std::sort(sorted.begin(), sorted.end()); });
        benchmark::DoNotOptimize(sorted.data());
    }
}

void forEachOf(benchmark::State & state, int wanted)
{
    Assembly * const assembly = root();
    for ([[maybe_unused]] auto iteration : state) {
        int nodes = 0;
        timed(state, [&] { assembly->forEachChild(count, &nodes); });
        if (nodes != wanted)
            state.SkipWithError("the walk missed children");
    }
}

void ForEachChild(benchmark::State & state)
{
    Pool::construct("bench");
    bench::createWideAssembly(Children);
    forEachOf(state, Children);
    Pool::destruct();
}

/// The same after a removal, after which one number stands twice and the numbers do not ascend any
/// more: of the two with one number the first is visited.
void ForEachChildUnsorted(benchmark::State & state)
{
    Pool::construct("bench");
    bench::createWideAssembly(Children);
    Hierarchy * first = nullptr;
    root()->forEachChild(
        [](Hierarchy * child, void * found) {
            *static_cast<Hierarchy **>(found) = child;
            return false;
        },
        &first);
    root()->removeChild(first);
    root()->addChild(first);
    forEachOf(state, Children - 1);
    Pool::destruct();
}

/// As many clashes of one name as the argument tells.
void UniqueName(benchmark::State & state)
{
    for ([[maybe_unused]] auto iteration : state) {
        Pool::construct("bench");
        timed(state, [&] {
            for (int i = 0; i < state.range(0); ++i) {
                std::string name = "A name as long as some";
                Pool::getInstance()->uniqueName(name);
                benchmark::DoNotOptimize(name.data());
            }
        });
        Pool::getInstance()->currentSubPool()->m_Names.clear();
        Pool::destruct();
    }
    state.counters["least_ns_each"] =
        1e6 * state.counters["least_ms"].value / static_cast<double>(state.range(0));
}

/// The yardstick of names: as many different ones into a set of their own.
void InsertNames(benchmark::State & state)
{
    for ([[maybe_unused]] auto iteration : state) {
        std::unordered_set<std::string> names;
        timed(state, [&] {
            for (int i = 0; i < state.range(0); ++i)
                names.insert("A name as long as some@" + std::to_string(i));
        });
    }
}

#define KELD_SIZED(function)                                                                       \
    BENCHMARK(function)                                                                            \
        ->UseManualTime()                                                                          \
        ->Unit(benchmark::kMillisecond)                                                            \
        ->Iterations(7)                                                                            \
        ->Arg(10000)                                                                               \
        ->Arg(100000)                                                                              \
        ->Arg(1000000)
#define KELD_INSTANCES(question) KELD_SIZED(Instances::question)->Name("Instances/" #question)
#define KELD_ATTRIBUTES(question) KELD_SIZED(Attributes::question)->Name("Attributes/" #question)
#define KELD_ONCE(function)                                                                        \
    BENCHMARK(function)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1)->Arg(1000000)
#define KELD_BENCH(function)                                                                       \
    BENCHMARK(function)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7)

KELD_ONCE(Memory)->Name("Instances/Memory");
KELD_ONCE(MemoryWithoutTransforms)->Name("Instances/MemoryWithoutTransforms");
KELD_ONCE(AttributeMemory)->Name("Attributes/Memory");

KELD_INSTANCES(FirstBuild);
KELD_INSTANCES(FirstRead);
KELD_INSTANCES(Build);
KELD_INSTANCES(Read);
KELD_INSTANCES(Clear);
KELD_INSTANCES(Size);
KELD_INSTANCES(WriteMemcpy);
KELD_INSTANCES(Write);
KELD_SIZED(Walk)->Name("Instances/Walk");

KELD_ATTRIBUTES(FirstBuild);
KELD_ATTRIBUTES(FirstRead);
KELD_ATTRIBUTES(Build);
KELD_ATTRIBUTES(Read);
KELD_ATTRIBUTES(Clear);
KELD_ATTRIBUTES(Size);
KELD_ATTRIBUTES(WriteMemcpy);
KELD_ATTRIBUTES(Write);
KELD_SIZED(WalkAttributes)->Name("Attributes/Walk");

KELD_BENCH(SortIntegers);
KELD_BENCH(ForEachChild);
KELD_BENCH(ForEachChildUnsorted);

KELD_BENCH(InsertNames)->Arg(10000);
KELD_BENCH(UniqueName)->Arg(1000)->Arg(10000);

} // namespace
