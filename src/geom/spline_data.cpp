#include "geom/spline_data.h"

#include <algorithm>

namespace geom {

Knots::Knots(long long count)
    : m_Block(static_cast<long long>(arrayLength(count, KnotSize) * KnotSize))
{}

double * Knots::values() noexcept
{
    return reinterpret_cast<double *>(m_Block.data());
}

double const * Knots::values() const noexcept
{
    return reinterpret_cast<double const *>(m_Block.data());
}

int * Knots::multiplicities() noexcept
{
    return reinterpret_cast<int *>(values() + size());
}

int const * Knots::multiplicities() const noexcept
{
    return reinterpret_cast<int const *>(values() + size());
}

void Knots::copyFrom(double const * values, int const * multiplicities)
{
    std::copy_n(values, size(), this->values());
    std::copy_n(multiplicities, size(), this->multiplicities());
}

void Knots::copyTo(double * values, int * multiplicities) const
{
    std::copy_n(this->values(), size(), values);
    std::copy_n(this->multiplicities(), size(), multiplicities);
}

void Knots::reverse()
{
    if (size() < 2)
        return;
    double * const first = values();
    double * const end = first + size();
    double const difference = end[-1] - *first;
    std::for_each(first, end, [&](double & knot) { knot = difference - knot; });
    std::reverse(first, end);
    std::reverse(multiplicities(), multiplicities() + size());
}

void SplineForm::get(int & degreeOut, bool & flagAOut, bool & flagBOut) const
{
    degreeOut = degree;
    flagAOut = flagA;
    flagBOut = flagB;
}

SplineForm copiedForm(int degree, bool flagA, bool flagB, int knotCount, int const * multiplicities,
                      double const * knots)
{
    SplineForm form{degree, flagA, flagB, Knots(knotCount)};
    form.knots.copyFrom(knots, multiplicities);
    return form;
}

} // namespace geom
