#ifndef KELD_BENCH_SPLINE_FORMATS_H
#define KELD_BENCH_SPLINE_FORMATS_H

#include <cstddef>
#include <memory>
#include <spline_model_generated.h>
#include <vector>

namespace bench {

/// The spline model in FlatBuffers' object API, packed right into the segment.
struct FlatFormat
{
    using Objects = std::unique_ptr<flat::ModelT>;

    static Objects objects();

    /// Bytes that writing needs.
    static std::size_t segmentSize(Objects const & objects);

    static void write(Objects const & objects, void * segment, std::size_t size);
    static Objects read(void const * segment, std::size_t size);
    static bool equal(Objects const & a, Objects const & b);
};

/// The spline model in Cap'n Proto, from plain structs and back, its message built right in the
/// segment.
struct CapnFormat
{
    struct Parameterization
    {
        int form = 0;
        std::vector<double> values;

        bool operator==(Parameterization const &) const = default;
    };

    struct SplineForm
    {
        int degree = 0;
        bool flagA = false;
        bool flagB = false;
        std::vector<double> knots;
        std::vector<int> multiplicities;

        bool operator==(SplineForm const &) const = default;
    };

    struct SplineSurface
    {
        int id = 0;
        int surfaceForm = 0;
        Parameterization parameterizationU;
        Parameterization parameterizationV;
        SplineForm formU;
        SplineForm formV;
        int pointCountU = 0;
        int pointCountV = 0;
        std::vector<double> points;
        std::vector<double> weights;

        bool operator==(SplineSurface const &) const = default;
    };

    using Objects = std::vector<SplineSurface>;

    static Objects objects();

    /// Bytes that writing needs.
    static std::size_t segmentSize(Objects const & objects);

    static void write(Objects const & objects, void * segment, std::size_t size);
    static Objects read(void const * segment, std::size_t size);
    static bool equal(Objects const & a, Objects const & b) { return a == b; }
};

} // namespace bench

#endif
