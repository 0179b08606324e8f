#ifndef KELD_TESTS_SUPPORT_WITNESSES_H
#define KELD_TESTS_SUPPORT_WITNESSES_H

#include "support/shapes.h"

#include <keld-transl/geom/point.h>

#include <functional>
#include <utility>

namespace tests {

/// A point of a class that the library does not know, which reports its end.
class ForeignPoint final : public geom::Point
{
public:
    ForeignPoint(Ends & ends, char const * name) : m_Ends(ends), m_Name(name) {}
    ForeignPoint(ForeignPoint const &) = default;
    ForeignPoint & operator=(ForeignPoint const &) = delete;
    ~ForeignPoint() override { m_Ends.push_back(m_Name); }

    void getCoordinates(double & x, double & y, double & z) override { x = y = z = 0; }

private:
    Ends & m_Ends;
    char const * m_Name;
};

/// A curve that has a look round at its end.
class WitnessCurve final : public geom::Curve
{
public:
    explicit WitnessCurve(std::function<void()> look) : m_Look(std::move(look)) {}
    WitnessCurve(WitnessCurve const &) = default;
    WitnessCurve & operator=(WitnessCurve const &) = delete;
    ~WitnessCurve() override { m_Look(); }

    geom::Parameterization const & getParameterization() override { return m_Parameterization; }
    Type getType() override { return Line; }

private:
    std::function<void()> m_Look;
    geom::Parameterization m_Parameterization;
};

} // namespace tests

#endif
