// What does counting a model cost beside one walk over it, and do the maps and texts of product
// attributes grow with the number of attributes and entities and no faster?

#include "geometry_models.h"
#include "stopwatch.h"

#include <keld-common/files.h>
#include <keld-common/text_tree.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/metadata/cad_database.h>
#include <keld-transl/metadata/product_attributes.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/surface.h>
#include <keld-translator-kit/joined_policy.h>

#include <chrono>
#include <exception>
#include <string>
#include <vector>

namespace {

using bench::timed;
using namespace transl_tk;

constexpr int PointCount = 5000000;
constexpr int InstanceCount = 1000000;
constexpr int AttributeCount = 1000000;

void createPoints()
{
    for (int id = 1; id <= PointCount; ++id)
        Point3D::create(id, id, 2.0 * id, 3.0 * id);
}

void createInstances()
{
    Part * const part = Part::create(0, "part");
    for (int i = 0; i < InstanceCount; ++i)
        Instance::create(0, part);
}

void createAttributes()
{
    for (int i = 0; i < AttributeCount; ++i)
        Attribute::create("name", static_cast<Attribute::Type>(1 + i % 16));
}

/// Thrown when all is counted, so that the model is still there to be counted again.
struct Counted : std::exception
{};

/// Collects as a translator's policy does, up to the last count.
class CountingPolicy : public translator_kit::CollectingPolicy
{
public:
    using translator_kit::CollectingPolicy::addData;

    void addData(DataBaseType const & type, int const & value) override
    {
        translator_kit::CollectingPolicy::addData(type, value);
        if (type == Faces && ++m_FaceCounts == 2)
            throw Counted();
    }

private:
    int m_FaceCounts = 0;
};

SubPool & model()
{
    return *Pool::getInstance()->currentSubPool();
}

using Create = void();

template <Create & create> void Count(benchmark::State & state)
{
    setDatabaseStorage(1);
    Pool::construct("bench");
    create();
    bool counted = false;
    for ([[maybe_unused]] auto iteration : state) {
        CountingPolicy policy;
        timed(state, [&] {
            try {
                addDataCadDB(&policy);
            } catch (Counted const &) {
                counted = true;
            }
        });
    }
    if (!counted)
        state.SkipWithError("the last count did not come");
    Pool::destruct();
}

/// The yardstick of counting: every entity and every attribute of the model is asked for its kind,
/// and every carrier's shape for its own.
template <Create & create> void Walk(benchmark::State & state)
{
    Pool::construct("bench");
    create();
    for ([[maybe_unused]] auto iteration : state)
        timed(state, [] {
            int kinds = 0;
            SubPool const & walked = model();
            for (EntityStore const * const store :
                 {&walked.m_Points, &walked.m_Faces, &walked.m_TriStrips, &walked.m_Hierarchies})
                store->m_Entities.forEach(
                    [&kinds](int, Base * entity) { kinds += entity->getEntityKind(); });
            walked.m_Curves3D.m_Entities.forEach([&kinds](int, Base * entity) {
                kinds += static_cast<Curve3D *>(entity)->getCurve()->getType();
            });
            walked.m_Surfaces.m_Entities.forEach([&kinds](int, Base * entity) {
                kinds += static_cast<Surface *>(entity)->getSurface()->getType();
            });
            for (Attribute const * const attribute : walked.m_Attributes)
                kinds += attribute->getType();
            benchmark::DoNotOptimize(kinds);
        });
    Pool::destruct();
}

/// What is behind the counting: the model is freed.
template <Create & create> void Empty(benchmark::State & state)
{
    for ([[maybe_unused]] auto iteration : state) {
        Pool::construct("bench");
        create();
        timed(state, [] { model().clear(); });
        Pool::destruct();
    }
}

// Product attributes

void setTimeOfEach(benchmark::State & state)
{
    constexpr double NanosecondsAMillisecond = 1e6;
    state.counters["least_ns_each"] = state.counters["least_ms"].value * NanosecondsAMillisecond /
                                      static_cast<double>(state.range(0));
}

std::vector<Part *> createParts(long long count)
{
    std::vector<Part *> parts;
    for (long long i = 0; i < count; ++i)
        parts.push_back(Part::create(0, ("part " + std::to_string(i)).c_str()));
    return parts;
}

Attribute * createOn(Base * entity, std::string const & name)
{
    Attribute * const attribute = Attribute::create(name.c_str(), Attribute::Product);
    attribute->addValue(1.5);
    attribute->addEntity(entity);
    return attribute;
}

void createOnEachPart(long long count)
{
    for (Part * const part : createParts(count))
        createOn(part, "Mass");
}

void createOnAllParts(long long count)
{
    Attribute * const attribute = Attribute::create("Mass", Attribute::Product);
    for (Part * const part : createParts(count))
        attribute->addEntity(part);
}

void createNames(long long count)
{
    Part * const part = Part::create(0, "part");
    for (long long i = 0; i < count; ++i)
        createOn(part, "Name " + std::to_string(i));
}

void createValues(long long count)
{
    Attribute * const attribute = createOn(Part::create(0, "part"), "Mass");
    for (long long i = 1; i < count; ++i)
        attribute->addValue(0.5 * static_cast<double>(i));
}

void fileAll(ProductAttributes & attributes)
{
    for (Attribute * const attribute : model().m_Attributes)
        ProductAttributes::createHierarchyAtrrsMap(attribute, &attributes);
}

using CreateMany = void(long long count);

template <CreateMany & create> void Map(benchmark::State & state)
{
    Pool::construct("bench");
    create(state.range(0));
    for ([[maybe_unused]] auto iteration : state) {
        ProductAttributes attributes;
        timed(state, [&] { fileAll(attributes); });
    }
    Pool::destruct();
    setTimeOfEach(state);
}

/// The yardstick of the map: the same walk over the entities of all attributes, with nothing made
/// of it.
template <CreateMany & create> void WalkEntities(benchmark::State & state)
{
    Pool::construct("bench");
    create(state.range(0));
    for ([[maybe_unused]] auto iteration : state)
        timed(state, [] {
            long long kinds = 0;
            for (Attribute * const attribute : model().m_Attributes)
                attribute->forEachEntity(
                    [](Base * entity, void * user) {
                        *static_cast<long long *>(user) += entity->getEntityKind();
                        return true;
                    },
                    &kinds);
            benchmark::DoNotOptimize(kinds);
        });
    Pool::destruct();
    setTimeOfEach(state);
}

template <CreateMany & create> void Texts(benchmark::State & state)
{
    Pool::construct("bench");
    create(state.range(0));
    ProductAttributes attributes;
    fileAll(attributes);
    for ([[maybe_unused]] auto iteration : state)
        timed(state, [&] {
            model().m_Hierarchies.m_Entities.forEach([&](int, Base * item) {
                FreeTreeS_P(attributes.calcHierarchyAttributes(static_cast<Hierarchy *>(item)));
            });
        });
    Pool::destruct();
    setTimeOfEach(state);
}

#define KELD_BENCH(...)                                                                            \
    BENCHMARK(__VA_ARGS__)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5)
#define KELD_GROWTH(...) KELD_BENCH(__VA_ARGS__)->RangeMultiplier(10)->Range(1000, 1000000)

KELD_BENCH(Walk<createPoints>)->Name("Metadata/Points/Walk");
KELD_BENCH(Count<createPoints>)->Name("Metadata/Points/Count");
KELD_BENCH(Walk<bench::createSplines>)->Name("Metadata/Splines/Walk");
KELD_BENCH(Count<bench::createSplines>)->Name("Metadata/Splines/Count");
KELD_BENCH(Walk<bench::createCurves>)->Name("Metadata/LinesAndCircles/Walk");
KELD_BENCH(Count<bench::createCurves>)->Name("Metadata/LinesAndCircles/Count");
KELD_BENCH(Empty<bench::createCurves>)->Name("Metadata/LinesAndCircles/Empty");
KELD_BENCH(Walk<createInstances>)->Name("Metadata/Instances/Walk");
KELD_BENCH(Count<createInstances>)->Name("Metadata/Instances/Count");
KELD_BENCH(Walk<createAttributes>)->Name("Metadata/Attributes/Walk");
KELD_BENCH(Count<createAttributes>)->Name("Metadata/Attributes/Count");

KELD_GROWTH(WalkEntities<createOnEachPart>)->Name("Metadata/Map/WalkAttributes");
KELD_GROWTH(Map<createOnEachPart>)->Name("Metadata/Map/Attributes");
KELD_GROWTH(WalkEntities<createOnAllParts>)->Name("Metadata/Map/WalkEntities");
KELD_GROWTH(Map<createOnAllParts>)->Name("Metadata/Map/Entities");
KELD_GROWTH(Texts<createOnEachPart>)->Name("Metadata/Texts/Items");
KELD_GROWTH(Texts<createValues>)->Name("Metadata/Texts/Values");
KELD_GROWTH(Texts<createNames>)->Name("Metadata/Texts/Names");

} // namespace
