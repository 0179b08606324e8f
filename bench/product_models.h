#ifndef KELD_BENCH_PRODUCT_MODELS_H
#define KELD_BENCH_PRODUCT_MODELS_H

namespace bench {

/// Instances of parts in assemblies: a part for 1,000 of them, an assembly for 100. Assemblies
/// stand in assemblies, ten in each, below one.
enum class Transforms { None, OneEach };

/// Makes the model in the current sub-pool with the bare calls, in the order in which a reader of
/// it makes them.
void createInstances(int count, Transforms transforms);

/// Id of the assembly above all others.
constexpr int RootId = 1;

/// Attributes with three values, two numbers and a text, on two points each.
void createAttributes(int count);

/// An assembly of the id `RootId` with so many children, all of them instances of one part.
void createWideAssembly(int children);

} // namespace bench

#endif
