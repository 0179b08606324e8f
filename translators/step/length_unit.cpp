#include "length_unit.h"

#include <algorithm>
#include <iterator>

namespace step {

namespace {

using transl_tk::Units;

constexpr LengthUnit Known[] = {
    {Units::Millimetre, 1, "millimetre", "MM"},   {Units::Metre, 1000, "metre", "M"},
    {Units::Inch, 25.4, "inch", "INCH"},          {Units::Foot, 304.8, "foot", "FT"},
    {Units::Foot, 304.8, "feet", "FT"},           {Units::Mile, 1609344, "mile", "MI"},
    {Units::Kilometre, 1e6, "kilometre", "KM"},   {Units::Micrometre, 1e-3, "micrometre", "UM"},
    {Units::Micron, 1e-3, "micron", "UM"},        {Units::Centimetre, 10, "centimetre", "CM"},
    {Units::Yard, 914.4, "yard", nullptr},        {Units::Decimetre, 100, "decimetre", nullptr},
    {Units::Angstrom, 1e-7, "angstrom", nullptr}, {Units::Nanometre, 1e-6, "nanometre", nullptr},
};

template <class Condition> LengthUnit const * first(Condition const & condition)
{
    auto const * const found = std::find_if(std::begin(Known), std::end(Known), condition);
    return found == std::end(Known) ? nullptr : found;
}

} // namespace

LengthUnit const * lengthUnitNamed(std::string name)
{
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) {
        return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    });
    return first([&](LengthUnit const & unit) { return name == unit.name; });
}

LengthUnit const * lengthUnitOfType(int type)
{
    return first([&](LengthUnit const & unit) { return type == unit.type; });
}

} // namespace step
