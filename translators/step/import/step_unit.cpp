#include "import/step_unit.h"

#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepGeom_OffsetCurve3d.hxx>
#include <TColStd_SequenceOfAsciiString.hxx>
#include <algorithm>

namespace step {

using transl_tk::Units;

StepUnit unitOf(STEPControl_Reader & reader)
{
    constexpr struct
    {
        char const * name;
        Units::LengthType type;
        double millimetres;
    } Known[] = {
        {"millimetre", Units::Millimetre, 1}, {"metre", Units::Metre, 1000},
        {"inch", Units::Inch, 25.4},          {"foot", Units::Foot, 304.8},
        {"feet", Units::Foot, 304.8},         {"mile", Units::Mile, 1609344},
        {"kilometre", Units::Kilometre, 1e6}, {"micrometre", Units::Micrometre, 1e-3},
        {"micron", Units::Micron, 1e-3},      {"centimetre", Units::Centimetre, 10},
        {"yard", Units::Yard, 914.4},         {"decimetre", Units::Decimetre, 100},
        {"angstrom", Units::Angstrom, 1e-7},  {"nanometre", Units::Nanometre, 1e-6},
    };
    TColStd_SequenceOfAsciiString lengths;
    TColStd_SequenceOfAsciiString angles;
    TColStd_SequenceOfAsciiString solidAngles;
    reader.FileUnits(lengths, angles, solidAngles);
    if (lengths.IsEmpty())
        return {};
    StepUnit result;
    result.name = lengths.First().ToCString();
    std::string name = result.name;
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) {
        return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    });
    for (auto const & unit : Known) {
        if (name == unit.name) {
            result.type = unit.type;
            result.millimetres = unit.millimetres;
        }
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
