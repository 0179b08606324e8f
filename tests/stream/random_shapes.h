#ifndef KELD_TESTS_STREAM_RANDOM_SHAPES_H
#define KELD_TESTS_STREAM_RANDOM_SHAPES_H

#include "stream/shape_description.h"

#include <bit>
#include <climits>
#include <cstdint>
#include <map>
#include <set>
#include <vector>

namespace tests {

/// Random decisions, read off a list that rapidcheck makes and, after a failure, shortens. Behind
/// its end all decisions are 0, which every choice below takes for the smallest one.
class Decisions
{
public:
    explicit Decisions(std::vector<std::uint64_t> list) : m_List(std::move(list)) {}

    bool areOver() const { return m_Next >= m_List.size(); }
    std::uint64_t next() { return areOver() ? 0 : m_List[m_Next++]; }
    int below(int limit) { return static_cast<int>(next() % static_cast<unsigned>(limit)); }
    int number() { return static_cast<int>(static_cast<unsigned>(next())); }

    /// An id to make an entity with: any but 0, for which a new one is chosen, and -1, which names
    /// nobody in a stream.
    int id()
    {
        int const id = number();
        return id == 0 || id == -1 ? 1 : id;
    }
    bool flag() { return below(2) != 0; }

    double value()
    {
        constexpr std::uint64_t Sign = 0x8000000000000000;
        constexpr std::uint64_t Exponent = 0x7FF0000000000000;
        std::uint64_t bits = next();
        switch (below(8)) {
        case 1: // infinite
            bits = (bits & Sign) | Exponent;
            break;
        case 2: // a NaN, quiet or signalling
            bits |= Exponent | 1;
            break;
        case 3: // too small for an exponent
            bits &= ~Exponent;
            break;
        case 4: // negative zero
            bits = Sign;
            break;
        default:
            break;
        }
        return std::bit_cast<double>(bits);
    }

private:
    std::vector<std::uint64_t> m_List;
    std::size_t m_Next = 0;
};

/// The kinds that were made in this run, to see that none was left out.
inline std::set<int> curveKinds;
inline std::set<int> surfaceKinds;

/// Descriptions of all shapes of a model by the ids of their carriers.
struct Shapes
{
    std::map<int, ShapeDescription> curves;
    std::map<int, ShapeDescription> uvCurves;
    std::map<int, ShapeDescription> surfaces;

    bool operator==(Shapes const &) const = default;
};

/// Decides on shapes until the decisions are over or there are `most`.
Shapes randomShapes(Decisions & decisions, int most = INT_MAX);

/// Makes carriers with the shapes in the current sub-pool.
void makeShapes(Shapes const & shapes, ShapeMaker & maker);

/// What the carriers of the current sub-pool tell.
Shapes shapesOfModel();

} // namespace tests

#endif
