#include "geom/array.h"

#include <keld-transl/geom/parameterization.h>

#include <numbers>
#include <utility>

namespace geom {

namespace {

constexpr int Angles = 9;

std::vector<double> stepped(double start, double end, unsigned int count, double step)
{
    std::vector<double> values(arrayLength(count, sizeof(double)));
    if (values.empty())
        return values;
    values.front() = start;
    for (std::size_t i = 1; i + 1 < values.size(); ++i)
        values[i] = values[i - 1] + step;
    values.back() = end;
    return values;
}

std::vector<double> quarterPis()
{
    std::vector<double> values(Angles);
    for (int i = 0; i < Angles; ++i)
        values[static_cast<std::size_t>(i)] = i * (std::numbers::pi / 4);
    return values;
}

} // namespace

Parameterization::Parameterization(ParamForm const & form, double const & start, double const & end,
                                   unsigned int const & count, double const & step)
{
    switch (form) {
    case SteppedA:
    case SteppedB:
        m_Form = form;
        m_Values = stepped(start, end, count, step);
        break;
    case Angular:
        m_Form = form;
        m_Values = quarterPis();
        break;
    }
}

Parameterization & Parameterization::operator=(Parameterization && other) noexcept
{
    // A vector that is moved to itself may lose its elements.
    if (this != &other)
        m_Values = std::move(other.m_Values);
    m_Form = other.m_Form;
    return *this;
}

} // namespace geom
