#ifndef KELD_STEP_LENGTH_UNIT_H
#define KELD_STEP_LENGTH_UNIT_H

#include <keld-transl/product/units.h>

#include <string>

namespace step {

/// A unit of length, as the toolkit, STEP files and the kernel call it.
struct LengthUnit
{
    transl_tk::Units::LengthType type;
    double millimetres;
    char const * name;       ///< in STEP files, in lower case
    char const * writerWord; ///< the kernel's for a file that it writes; null where it has none
};

/// The unit of that name, in any case; null for a name that is not known.
LengthUnit const * lengthUnitNamed(std::string name);

/// The unit of a type of the toolkit; null for one that is not known.
LengthUnit const * lengthUnitOfType(int type);

} // namespace step

#endif
