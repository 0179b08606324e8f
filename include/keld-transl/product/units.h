#ifndef KELD_TRANSL_PRODUCT_UNITS_H
#define KELD_TRANSL_PRODUCT_UNITS_H

#include <keld-transl/export.h>

namespace transl_tk {

/// The units in which a component's numbers are meant. The toolkit converts nothing.
class KELD_TRANSL_EXPORT Units
{
protected:
    Units() = default;
    virtual ~Units();

public:
    /// The numbers also stand in the model stream.
    enum LengthType : int {
        Millimetre = 1,
        Metre = 2,
        Inch = 3,
        Foot = 4,
        Mile = 5,
        Kilometre = 6,
        LengthSeven = 7,
        Micrometre = 8,
        Centimetre = 9,
        LengthTen = 10,
        Micron = 11,
        Decimetre = 12,
        Yard = 13,
        Angstrom = 14,
        Nanometre = 15
    };

    /// A number that is passed on; the toolkit gives it no meaning.
    enum AngularType : int {};

    Units(Units const &) = default;
    Units & operator=(Units const &) = default;

    /// Makes units of any numbers, which the caller owns until a component adopts them.
    static Units * create(LengthType const & lengthType, AngularType const & angularType,
                          double const & lengthScale, double const & angularScale);
    static void destruct(Units * units);

    virtual LengthType getLengthType() = 0;
    virtual double getLengthScale() = 0;
    virtual AngularType getAngularType() = 0;
    virtual double getAngularScale() = 0;

    /// The length scale times the number of these units in a metre; 0 for a length type without a
    /// name. `LengthSeven` counts 0.001609433 and `LengthTen` 3.93700787e-08.
    virtual double getUnitsPerMetre() = 0;
};

} // namespace transl_tk

#endif
