// What do the store of entities and its memory cost, beside an ordered map and a B-tree of the same
// objects?

#include "stopwatch.h"

#include <keld-transl/model/point3d.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/fin.h>

#include <absl/container/btree_map.h>
#include <algorithm>
#include <malloc.h>
#include <map>
#include <numeric>
#include <random>
#include <vector>

namespace {

using bench::timed;

constexpr int Count = 5000000;
constexpr int Finds = 2000000;

/// The toolkit's own point, made with plain `new` and kept in a table of another kind. Like an
/// entity it leaves its table when it dies.
template <class Table> class PlainPoint
{
public:
    PlainPoint(Table & table, int id, double x, double y, double z)
        : m_Id(id), m_Table(table), m_Coordinates{x, y, z}
    {}
    PlainPoint(PlainPoint const &) = delete;
    PlainPoint & operator=(PlainPoint const &) = delete;
    virtual ~PlainPoint() { m_Table.erase(m_Id); }
    virtual void getCoordinates(double & x, double & y, double & z)
    {
        x = m_Coordinates[0];
        y = m_Coordinates[1];
        z = m_Coordinates[2];
    }

private:
    int m_Id;
    Table & m_Table;
    double m_Coordinates[3];
};

template <template <class, class> class Map> class PlainStore
{
    struct Table;
    using Point = PlainPoint<Table>;
    struct Table : Map<int, Point *>
    {};

public:
    void create(int id)
    {
        if (id == 0)
            id = m_Table.empty() ? 1 : m_Table.rbegin()->first + 1;
        auto const [entry, isNew] = m_Table.try_emplace(id, nullptr);
        if (isNew)
            entry->second = new Point(m_Table, id, 1, 2, 3);
    }
    void * find(int id)
    {
        auto const entry = m_Table.find(id);
        return entry != m_Table.end() ? entry->second : nullptr;
    }
    double walk()
    {
        double sum = 0;
        for (auto const & [id, point] : m_Table) {
            double c[3];
            point->getCoordinates(c[0], c[1], c[2]);
            sum += c[0] + id;
        }
        return sum;
    }
    void clear()
    {
        std::vector<Point *> points;
        points.reserve(m_Table.size());
        for (auto const & [id, point] : m_Table)
            points.push_back(point);
        for (Point * const point : points)
            delete point;
    }
    std::size_t size() const { return m_Table.size(); }

    /// Bytes that the table takes beside the objects, measured as what freeing it gives back.
    double tableBytes()
    {
        auto const before = mallinfo2().uordblks;
        Map<int, Point *> const copy(m_Table);
        return static_cast<double>(mallinfo2().uordblks - before);
    }

private:
    Table m_Table;
};

template <class Key, class Value> using StdMap = std::map<Key, Value>;
template <class Key, class Value> using BTreeMap = absl::btree_map<Key, Value>;

using MapStore = PlainStore<StdMap>;
using BTreeStore = PlainStore<BTreeMap>;

class KeldStore
{
public:
    KeldStore()
    {
        transl_tk::Pool::construct("bench");
        m_SubPool = transl_tk::Pool::getInstance()->currentSubPool();
    }
    KeldStore(KeldStore const &) = delete;
    KeldStore & operator=(KeldStore const &) = delete;
    ~KeldStore() { transl_tk::Pool::destruct(); }

    void create(int id) { transl_tk::Point3D::create(id, 1, 2, 3); }
    void * find(int id) { return m_SubPool->m_Points.m_Entities.lookup(id); }
    double walk()
    {
        double sum = 0;
        m_SubPool->m_Points.m_Entities.forEach([&](int id, transl_tk::Base * point) {
            double c[3];
            static_cast<transl_tk::Point3D *>(point)->getCoordinates(c[0], c[1], c[2]);
            sum += c[0] + id;
        });
        return sum;
    }
    void clear() { m_SubPool->clear(); }
    std::size_t size() const { return m_SubPool->m_Points.m_Entities.size(); }
    double tableBytes()
    {
        auto const before = mallinfo2().uordblks;
        transl_tk::EntityTable const copy(m_SubPool->m_Points.m_Entities);
        return static_cast<double>(mallinfo2().uordblks - before);
    }

private:
    transl_tk::SubPool * m_SubPool;
};

/// The ids of a pattern, in the order in which they are created.
enum Pattern { Dense, Negative, Strided, Random, Patterns };

char const * const PatternNames[Patterns] = {"dense", "negative", "strided", "random"};

std::vector<int> const & idsOf(Pattern pattern)
{
    static std::vector<int> lists[Patterns];
    std::vector<int> & ids = lists[pattern];
    if (ids.empty()) {
        std::mt19937 random(1);
        switch (pattern) {
        case Dense:
            ids.assign(Count, 0);
            break;
        case Negative:
            ids.resize(Count);
            std::iota(ids.begin(), ids.end(), -Count);
            break;
        case Strided:
            for (long long id = -2147000000; id < 2147000000; id += 1000000)
                ids.push_back(static_cast<int>(id + 1));
            break;
        case Random:
        case Patterns:
            for (int i = 0; i < Count; ++i)
                ids.push_back(static_cast<int>(random()) | 1);
            break;
        }
    }
    return ids;
}

/// Ids to look for, all of them there, in random order.
std::vector<int> probesOf(Pattern pattern)
{
    std::vector<int> ids = idsOf(pattern);
    if (pattern == Dense)
        std::iota(ids.begin(), ids.end(), 1);
    std::mt19937 random(2);
    std::vector<int> probes(Finds);
    for (int & probe : probes)
        probe = ids[random() % ids.size()];
    return probes;
}

Pattern patternOf(benchmark::State & state)
{
    auto const pattern = static_cast<Pattern>(state.range(0));
    state.SetLabel(PatternNames[pattern]);
    return pattern;
}

template <class Store> void fill(Store & store, Pattern pattern)
{
    for (int const id : idsOf(pattern))
        store.create(id);
}

template <class Store> void Create(benchmark::State & state)
{
    Pattern const pattern = patternOf(state);
    idsOf(pattern);
    for ([[maybe_unused]] auto iteration : state) {
        Store store;
        timed(state, [&] { fill(store, pattern); });
        state.counters["ids"] = static_cast<double>(store.size());
        store.clear();
    }
}

template <class Store> void Find(benchmark::State & state)
{
    Pattern const pattern = patternOf(state);
    std::vector<int> const probes = probesOf(pattern);
    Store store;
    fill(store, pattern);
    for ([[maybe_unused]] auto iteration : state)
        timed(state, [&] {
            for (int const id : probes)
                benchmark::DoNotOptimize(store.find(id));
        });
    state.counters["bytes_per_id"] = store.tableBytes() / static_cast<double>(store.size());
    store.clear();
}

template <class Store> void Walk(benchmark::State & state)
{
    Store store;
    fill(store, patternOf(state));
    for ([[maybe_unused]] auto iteration : state)
        timed(state, [&] { benchmark::DoNotOptimize(store.walk()); });
    store.clear();
}

template <class Store> void Clear(benchmark::State & state)
{
    Pattern const pattern = patternOf(state);
    for ([[maybe_unused]] auto iteration : state) {
        Store store;
        fill(store, pattern);
        timed(state, [&] { store.clear(); });
    }
}

constexpr int Carriers = 100000;

/// What two fins would take for each edge in a vector that holds two of them itself.
struct InlinePair
{
    transl_tk::Base * users[2];
    std::size_t count;
};

/// Bytes that two fins for each of many edges take; or as many fins that refer to no edge.
double bytesOfFins(bool useEdges)
{
    KeldStore store;
    std::vector<transl_tk::Edge *> edges(Carriers);
    for (transl_tk::Edge *& edge : edges)
        edge = transl_tk::Edge::create(0, nullptr, nullptr, nullptr, true);
    auto const before = mallinfo2().uordblks;
    for (bool const sense : {true, false})
        for (transl_tk::Edge * const edge : edges)
            transl_tk::Fin::create(0, useEdges ? edge : nullptr, sense);
    return static_cast<double>(mallinfo2().uordblks - before);
}

/// What does it cost an edge to know its two fins?
void UserSets(benchmark::State & state)
{
    double bytes = 0;
    // The allocator maps large blocks by themselves, uncounted, until some have come back to it.
    bytesOfFins(true);
    for ([[maybe_unused]] auto iteration : state) {
        double const finsAlone = bytesOfFins(false);
        bytes = bytesOfFins(true) - finsAlone;
    }
    state.counters["bytes_per_carrier"] = bytes / Carriers;
    state.counters["inline_pair_bytes"] = sizeof(InlinePair);
}
BENCHMARK(UserSets)->Unit(benchmark::kMillisecond)->Iterations(1);

#define KELD_BENCH(question, store)                                                                \
    BENCHMARK(question<store>)                                                                     \
        ->Name(#question "/" #store)                                                               \
        ->DenseRange(Dense, Random)                                                                \
        ->UseManualTime()                                                                          \
        ->Unit(benchmark::kMillisecond)                                                            \
        ->Iterations(3)

KELD_BENCH(Create, MapStore);
KELD_BENCH(Create, BTreeStore);
KELD_BENCH(Create, KeldStore);
KELD_BENCH(Find, MapStore);
KELD_BENCH(Find, BTreeStore);
KELD_BENCH(Find, KeldStore);
KELD_BENCH(Walk, MapStore);
KELD_BENCH(Walk, BTreeStore);
KELD_BENCH(Walk, KeldStore);
KELD_BENCH(Clear, MapStore);
KELD_BENCH(Clear, BTreeStore);
KELD_BENCH(Clear, KeldStore);

} // namespace
