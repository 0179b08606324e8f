#include "model/block_pool.h"

#include <keld-transl/product/units.h>

#include <iterator>

namespace transl_tk {

namespace {

/// Units in a metre by length type. Those of `LengthSeven` and `LengthTen` follow no rule of the
/// others; both sides of an exchange count on these very numbers.
constexpr double unitsPerMetre[] = {
    0.0,
    1000.0,         // Millimetre
    1.0,            // Metre
    39.3700787,     // Inch
    3.2808399,      // Foot
    0.000621371192, // Mile
    0.001,          // Kilometre
    0.001609433,    // LengthSeven
    1000000.0,      // Micrometre
    100.0,          // Centimetre
    3.93700787e-08, // LengthTen
    1000000.0,      // Micron
    10.0,           // Decimetre
    1.0936133,      // Yard
    10000000000.0,  // Angstrom
    1000000000.0,   // Nanometre
};

class ProxyUnits final : public Units, public Pooled<ProxyUnits>
{
public:
    ProxyUnits(LengthType lengthType, AngularType angularType, double lengthScale,
               double angularScale)
        : m_LengthType(lengthType), m_AngularType(angularType), m_LengthScale(lengthScale),
          m_AngularScale(angularScale)
    {}

    LengthType getLengthType() override { return m_LengthType; }
    double getLengthScale() override { return m_LengthScale; }
    AngularType getAngularType() override { return m_AngularType; }
    double getAngularScale() override { return m_AngularScale; }

    double getUnitsPerMetre() override
    {
        if (m_LengthType < Millimetre || m_LengthType > Nanometre)
            return 0.0;
        return m_LengthScale * unitsPerMetre[m_LengthType];
    }

private:
    LengthType m_LengthType;
    AngularType m_AngularType;
    double m_LengthScale;
    double m_AngularScale;
};

static_assert(std::size(unitsPerMetre) == Units::Nanometre + 1);

} // namespace

Units::~Units() = default;

Units * Units::create(LengthType const & lengthType, AngularType const & angularType,
                      double const & lengthScale, double const & angularScale)
{
    return new ProxyUnits(lengthType, angularType, lengthScale, angularScale);
}

void Units::destruct(Units * units)
{
    delete units;
}

} // namespace transl_tk
