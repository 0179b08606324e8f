#ifndef KELD_TESTS_SUPPORT_SHAPES_H
#define KELD_TESTS_SUPPORT_SHAPES_H

#include <keld-transl/geom/curve.h>
#include <keld-transl/geom/surface.h>
#include <keld-transl/geom/uv_curve.h>

#include <array>
#include <bit>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <sys/mman.h>
#include <vector>

namespace tests {

/// A shape that the test owns.
template <class Shape> struct Destruct
{
    void operator()(Shape * shape) const { Shape::destruct(shape); }
};
template <class Shape> using Owned = std::unique_ptr<Shape, Destruct<Shape>>;

template <class Shape> Owned<Shape> owned(Shape * shape)
{
    return Owned<Shape>(shape);
}

using Triple = std::array<double, 3>;

/// What a getter of a triple fills in: `tripleOf(line, &geom::Line::getPoint)`.
template <class Shape, class Kind>
Triple tripleOf(Owned<Shape> const & shape, void (Kind::*getter)(double (&)[3]))
{
    double values[3] = {};
    (shape.get()->*getter)(values);
    return std::to_array(values);
}

struct Placement
{
    Triple location;
    Triple first;
    Triple second;
    Triple third;

    bool operator==(Placement const &) const = default;
};

template <class Shape> Placement placementOf(Shape & shape)
{
    double location[3];
    double first[3];
    double second[3];
    double third[3];
    shape.getPlacement(location, first, second, third);
    return {std::to_array(location), std::to_array(first), std::to_array(second),
            std::to_array(third)};
}

/// Three doubles that end the process when somebody reads them.
class Unreadable
{
public:
    Unreadable() : m_Page(mmap(nullptr, Size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {}
    Unreadable(Unreadable const &) = delete;
    Unreadable & operator=(Unreadable const &) = delete;
    ~Unreadable() { munmap(m_Page, Size); }

    double const (&values() const)[3] { return *static_cast<double const(*)[3]>(m_Page); }

private:
    static constexpr std::size_t Size = 4096;
    void * m_Page;
};

/// Checks that a kind computes its third axis from the first two, whatever they are, and reads no
/// other one. `make(location, first, second, ignored)` makes a shape of the kind.
template <class Make> void expectComputedThirdAxis(Make && make)
{
    struct Row
    {
        double first[3];
        double second[3];
        Triple third;
    };
    Row const rows[] = {
        {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{0, 1, 0}, {1, 0, 0}, {0, 0, -1}},
        {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}, {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
        {{2, 3, 5}, {2, 3, 5}, {0, 0, 0}}, {{2, 3, 5}, {7, 11, 13}, {-16, 9, 1}},
    };
    double const location[3] = {17, 19, 23};
    Unreadable const ignored;
    for (Row const & row : rows) {
        auto const shape = owned(make(location, row.first, row.second, ignored.values()));
        EXPECT_EQ(placementOf(*shape.get()),
                  (Placement{std::to_array(location), std::to_array(row.first),
                             std::to_array(row.second), row.third}));
    }
}

/// Checks that `call` throws the length error with its text.
template <class Call> void expectLengthError(Call && call)
{
    try {
        call();
        ADD_FAILURE() << "nothing thrown";
    } catch (std::length_error const & error) {
        EXPECT_STREQ(error.what(), "vector<T> too long");
    }
}

/// A placement for shapes whose placement does not matter: location (2, 3, 4), axes x and y.
inline constexpr double At[3] = {2, 3, 4};
inline constexpr double AxisX[3] = {1, 0, 0};
inline constexpr double AxisY[3] = {0, 1, 0};
inline constexpr double Nowhere[3] = {9, 9, 9};

/// The bits of doubles, for values that do not compare equal to themselves or do so to others.
template <class Values> std::vector<std::uint64_t> bitsOf(Values const & values)
{
    std::vector<std::uint64_t> bits;
    for (double const value : values)
        bits.push_back(std::bit_cast<std::uint64_t>(value));
    return bits;
}

/// A signalling NaN with a payload, and a negative zero.
inline double const OddNan = std::bit_cast<double>(std::uint64_t{0x7FF4000000000123});
inline constexpr double NegativeZero = -0.0;

inline geom::Parameterization parameters(std::vector<double> values,
                                         geom::ParamForm form = geom::ParamForm::SteppedB)
{
    geom::Parameterization made;
    made.m_Values = std::move(values);
    made.m_Form = form;
    return made;
}

/// Names of shapes in the order of their end.
using Ends = std::vector<char const *>;

/// A curve of a class that the library does not know, which reports its end.
class ForeignCurve final : public geom::Curve
{
public:
    ForeignCurve(Ends & ends, char const * name, Type type = Type::Line)
        : m_Ends(ends), m_Name(name), m_Type(type)
    {}
    ForeignCurve(ForeignCurve const &) = default;
    ForeignCurve & operator=(ForeignCurve const &) = delete;
    ~ForeignCurve() override { m_Ends.push_back(m_Name); }

    geom::Parameterization const & getParameterization() override { return m_Parameterization; }
    Type getType() override { return m_Type; }

private:
    Ends & m_Ends;
    char const * m_Name;
    Type m_Type;
    geom::Parameterization m_Parameterization;
};

/// A surface of a class that the library does not know, which reports its end.
class ForeignSurface final : public geom::Surface
{
public:
    ForeignSurface(Ends & ends, char const * name, Type type = Type::Plane)
        : m_Ends(ends), m_Name(name), m_Type(type)
    {}
    ForeignSurface(ForeignSurface const &) = default;
    ForeignSurface & operator=(ForeignSurface const &) = delete;
    ~ForeignSurface() override { m_Ends.push_back(m_Name); }

    Type getType() override { return m_Type; }
    geom::Parameterization const & getParameterizationU() override { return m_Parameterization; }
    geom::Parameterization const & getParameterizationV() override { return m_Parameterization; }

private:
    Ends & m_Ends;
    char const * m_Name;
    Type m_Type;
    geom::Parameterization m_Parameterization;
};

/// A curve in parameter space of a class that the library does not know, which reports its end.
class ForeignUVCurve final : public geom::UVCurve
{
public:
    ForeignUVCurve(Ends & ends, char const * name) : m_Ends(ends), m_Name(name) {}
    ForeignUVCurve(ForeignUVCurve const &) = default;
    ForeignUVCurve & operator=(ForeignUVCurve const &) = delete;
    ~ForeignUVCurve() override { m_Ends.push_back(m_Name); }

    void getSplineForm(int &, bool &, bool &) override {}
    int getNumControlPoints() override { return 0; }
    void getControlPoints(double *) override {}
    void getWeights(double *) override {}
    int getNumKnots() override { return 0; }
    void getKnots(double *, int *) override {}
    bool isRational() override { return false; }
    void reverse() override {}

private:
    Ends & m_Ends;
    char const * m_Name;
};

/// A point, factor and centre for which every step of the scaling rounds: a fused or folded
/// computation gives another last bit.
namespace rounding {
inline constexpr double Position = 3.2;
inline constexpr double Factor = 2.6;
inline constexpr double Centre = -1.7;
inline constexpr double Scaled = 0x1.6147ae147ae16p+3;
} // namespace rounding

} // namespace tests

#endif
