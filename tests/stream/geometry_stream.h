#ifndef KELD_TESTS_STREAM_GEOMETRY_STREAM_H
#define KELD_TESTS_STREAM_GEOMETRY_STREAM_H

#include "stream/geometry_records.h"
#include "support/leftovers.h"
#include "support/models.h"
#include "support/segments.h"
#include "support/shapes.h"

#include <keld-transl/process/server.h>
#include <keld-transl/topology/cartesian_coord.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/spot_weld.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/uv_curve.h>

#include <gtest/gtest.h>

namespace tests {

inline constexpr int SpotWelds = 3;
inline constexpr int CoordinateSystems = 4;
inline constexpr int Curves = 5;
inline constexpr int UVCurves = 6;
inline constexpr int Surfaces = 7;

/// A model that is written to and read from segments.
class GeometryStream : public testing::Test
{
protected:
    /// Expects that the model is written as `bytes`, that its size says so, and that reading them
    /// into the cleared model gives a model that is written as `bytes` again. What was read stays.
    void expectTravelsAs(Bytes const & bytes)
    {
        expectWrittenAs(bytes);
        currentSubPool().clear();
        read(bytes);
        EXPECT_EQ(transl_tk::Server::exchangeFailure(), "");
        expectWrittenAs(bytes);
    }

    void expectWrittenAs(Bytes const & bytes)
    {
        std::string const name = segmentName();
        auto const size = static_cast<long long>(bytes.size());
        EXPECT_EQ(transl_tk::Pool::getInstance()->getSize(), size);
        EXPECT_EQ(transl_tk::Server::writeSharedMem(name), size);
        EXPECT_EQ(segmentBytes(name), bytes);
        transl_tk::Server::unmapSharedMemory(false);
    }

    static void read(Bytes const & bytes)
    {
        std::string const name = segmentName();
        ScopedSegment const segment(name, bytes);
        transl_tk::Server::readSharedMem(name, static_cast<long long>(bytes.size()));
    }

    /// The entity `id` of a store; null when there is none.
    template <class Entity>
    static Entity * entity(transl_tk::EntityStore transl_tk::SubPool::*store, int id)
    {
        return static_cast<Entity *>((currentSubPool().*store).m_Entities.lookup(id));
    }

    static std::size_t countOf(transl_tk::EntityStore transl_tk::SubPool::*store)
    {
        return (currentSubPool().*store).m_Entities.size();
    }

    /// The shape that the carrier 9 holds.
    template <class Kind> static Kind & curve()
    {
        auto * const carrier = entity<transl_tk::Curve3D>(&transl_tk::SubPool::m_Curves3D, 9);
        return dynamic_cast<Kind &>(*carrier->getCurve());
    }
    template <class Kind> static Kind & surface()
    {
        auto * const carrier = entity<transl_tk::Surface>(&transl_tk::SubPool::m_Surfaces, 9);
        return dynamic_cast<Kind &>(*carrier->getSurface());
    }

    LeftoverGuard m_Guard;
    ScopedPool m_Pool;
};

inline constexpr Triple Triple123 = {1, 2, 3};
inline constexpr Triple Triple456 = {4, 5, 6};

/// The axes of the shapes of `records::placement`.
inline constexpr double L[3] = {1, 2, 3};
inline constexpr double A[3] = {4, 5, 6};
inline constexpr double B[3] = {7, 8, 9};
inline constexpr Placement Placed = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {-3, 6, -3}};

inline constexpr double Knots[2] = {0, 1};
inline constexpr int Multiplicities[2] = {3, 2};
inline constexpr double OneToSix[6] = {1, 2, 3, 4, 5, 6};
inline constexpr double SevenAndEight[2] = {7, 8};

inline geom::Parameterization ofCurve()
{
    return parameters({10}, geom::SteppedB);
}
inline geom::Parameterization ofU()
{
    return parameters({20, 21}, geom::SteppedA);
}
inline geom::Parameterization ofV()
{
    return parameters({22}, geom::Angular);
}

inline bool same(geom::Parameterization const & one, geom::Parameterization const & other)
{
    return one.m_Form == other.m_Form && one.m_Values == other.m_Values;
}

template <class Curve> void expectValuesOfCurve(Curve & curve)
{
    EXPECT_TRUE(same(curve.getParameterization(), ofCurve()));
}

template <class Surface> void expectValuesOfSurface(Surface & surface)
{
    EXPECT_TRUE(same(surface.getParameterizationU(), ofU()));
    EXPECT_TRUE(same(surface.getParameterizationV(), ofV()));
}

} // namespace tests

#endif
