#ifndef KELD_STEP_IMPORT_STEP_UNIT_H
#define KELD_STEP_IMPORT_STEP_UNIT_H

#include <keld-transl/product/units.h>

#include <string>

class STEPControl_Reader;

namespace step {

/// The unit of the lengths in a STEP file.
struct StepUnit
{
    std::string name; ///< the file's own word, empty when it has none
    transl_tk::Units::LengthType type = transl_tk::Units::Millimetre;
    double millimetres = 1; ///< 1 also for a word that is not known
};

/// The unit of a file that was parsed.
StepUnit unitOf(STEPControl_Reader & reader);

/// Turns the distances of a file's offset curves into millimetres, to be called between parse and
/// transfer: the kernel takes them for such, unlike all other lengths.
void scaleOffsetCurves(STEPControl_Reader & reader, double millimetres);

} // namespace step

#endif
