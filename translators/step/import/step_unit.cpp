#include "import/step_unit.h"

#include "length_unit.h"

#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepGeom_OffsetCurve3d.hxx>
#include <TColStd_SequenceOfAsciiString.hxx>

namespace step {

StepUnit unitOf(STEPControl_Reader & reader)
{
    TColStd_SequenceOfAsciiString lengths;
    TColStd_SequenceOfAsciiString angles;
    TColStd_SequenceOfAsciiString solidAngles;
    reader.FileUnits(lengths, angles, solidAngles);
    if (lengths.IsEmpty())
        return {};
    StepUnit result;
    result.name = lengths.First().ToCString();
    if (LengthUnit const * const unit = lengthUnitNamed(result.name)) {
        result.type = unit->type;
        result.millimetres = unit->millimetres;
    }
    return result;
}

void scaleOffsetCurves(STEPControl_Reader & reader, double millimetres)
{
    if (millimetres == 1)
        return;
    auto const model = reader.StepModel();
    for (int i = 1; i <= model->NbEntities(); ++i) {
        if (auto const curve = Handle(StepGeom_OffsetCurve3d)::DownCast(model->Value(i)))
            curve->SetDistance(curve->Distance() * millimetres);
    }
}

} // namespace step
