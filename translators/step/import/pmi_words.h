#ifndef KELD_STEP_IMPORT_PMI_WORDS_H
#define KELD_STEP_IMPORT_PMI_WORDS_H

#include <XCAFDimTolObjects_DatumModifWithValue.hxx>
#include <XCAFDimTolObjects_DatumSingleModif.hxx>
#include <XCAFDimTolObjects_DatumTargetType.hxx>
#include <XCAFDimTolObjects_DimensionFormVariance.hxx>
#include <XCAFDimTolObjects_DimensionGrade.hxx>
#include <XCAFDimTolObjects_DimensionModif.hxx>
#include <XCAFDimTolObjects_DimensionQualifier.hxx>
#include <XCAFDimTolObjects_DimensionType.hxx>
#include <XCAFDimTolObjects_GeomToleranceMatReqModif.hxx>
#include <XCAFDimTolObjects_GeomToleranceModif.hxx>
#include <XCAFDimTolObjects_GeomToleranceType.hxx>
#include <XCAFDimTolObjects_GeomToleranceTypeValue.hxx>
#include <XCAFDimTolObjects_GeomToleranceZoneModif.hxx>
#include <string>

namespace step {

// Words for what the kernel numbers; "unknown" for numbers that it does not have.

char const * wordOf(XCAFDimTolObjects_DimensionType type);
char const * wordOf(XCAFDimTolObjects_DimensionQualifier qualifier);
char const * wordOf(XCAFDimTolObjects_DimensionModif modifier);
char const * wordOf(XCAFDimTolObjects_GeomToleranceType type);
char const * wordOf(XCAFDimTolObjects_GeomToleranceTypeValue type);
char const * wordOf(XCAFDimTolObjects_GeomToleranceMatReqModif modifier);
char const * wordOf(XCAFDimTolObjects_GeomToleranceZoneModif modifier);
char const * wordOf(XCAFDimTolObjects_GeomToleranceModif modifier);
char const * wordOf(XCAFDimTolObjects_DatumSingleModif modifier);
char const * wordOf(XCAFDimTolObjects_DatumModifWithValue modifier);
char const * wordOf(XCAFDimTolObjects_DatumTargetType type);

/// A class of tolerances as drawings have it, such as "H7" for a hole and "h7" for a shaft.
std::string toleranceClass(bool isHole, XCAFDimTolObjects_DimensionFormVariance variance,
                           XCAFDimTolObjects_DimensionGrade grade);

} // namespace step

#endif
