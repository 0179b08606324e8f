#include "pmi.h"

#include "placement.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/product/part.h>

#include <Standard_Failure.hxx>
#include <TColStd_HArray1OfReal.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDimTolObjects_DatumObject.hxx>
#include <XCAFDimTolObjects_DimensionObject.hxx>
#include <XCAFDimTolObjects_GeomToleranceObject.hxx>
#include <XCAFDoc_Datum.hxx>
#include <XCAFDoc_DimTolTool.hxx>
#include <XCAFDoc_Dimension.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_GeomTolerance.hxx>
#include <gp_Ax2.hxx>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;

constexpr char const * DimensionWords[] = {
    "location",
    "curved distance",
    "linear distance",
    "linear distance from centre to outer",
    "linear distance from centre to inner",
    "linear distance from outer to centre",
    "linear distance from outer to outer",
    "linear distance from outer to inner",
    "linear distance from inner to centre",
    "linear distance from inner to outer",
    "linear distance from inner to inner",
    "angle between",
    "oriented location",
    "location with path",
    "curve length",
    "diameter",
    "spherical diameter",
    "radius",
    "spherical radius",
    "toroidal minor diameter",
    "toroidal major diameter",
    "toroidal minor radius",
    "toroidal major radius",
    "toroidal high major diameter",
    "toroidal low major diameter",
    "toroidal high major radius",
    "toroidal low major radius",
    "thickness",
    "angle",
    "size with path",
    "common label",
    "presentation",
};

constexpr char const * ToleranceWords[] = {
    "tolerance",          "angularity",       "circular runout", "circularity",
    "coaxiality",         "concentricity",    "cylindricity",    "flatness",
    "parallelism",        "perpendicularity", "position",        "profile of line",
    "profile of surface", "straightness",     "symmetry",        "total runout",
};

template <std::size_t Count> char const * wordOf(char const * const (&words)[Count], int number)
{
    return number >= 0 && static_cast<std::size_t>(number) < Count ? words[number] : "unknown";
}

std::string textOf(Handle(TCollection_HAsciiString) const & text)
{
    return text.IsNull() ? std::string() : text->ToCString();
}

/// What dimensions, tolerances and datums have in common.
struct Note
{
    AttributeNumber number = DimensionAttribute;
    int type = 0; ///< the kernel's number of the kind of dimension or tolerance
    std::string word;
    std::string name;
    std::string text;
    std::vector<double> values;
    gp_Ax2 plane;
    gp_Pnt textPoint;
    std::vector<double> points;
};

template <class Object> void setPlace(Note & note, Object const & object, bool hasText)
{
    if (object.HasPlane())
        note.plane = object.GetPlane();
    if (hasText)
        note.textPoint = object.GetPointTextAttach();
    if (object.HasPoint()) {
        gp_Pnt const point = object.GetPoint();
        note.points = {point.X(), point.Y(), point.Z()};
    }
}

Note noteFrom(XCAFDimTolObjects_DimensionObject const & dimension)
{
    Note note;
    note.number = DimensionAttribute;
    note.type = dimension.GetType();
    note.word = wordOf(DimensionWords, note.type);
    note.name = textOf(dimension.GetSemanticName());
    if (auto const values = dimension.GetValues(); !values.IsNull())
        note.values.assign(values->Array1().begin(), values->Array1().end());
    if (!dimension.GetPresentationName().IsNull())
        note.text = textOf(dimension.GetPresentationName());
    setPlace(note, dimension, dimension.HasTextPoint());
    return note;
}

Note noteFrom(XCAFDimTolObjects_GeomToleranceObject const & tolerance)
{
    Note note;
    note.number = GeometricToleranceAttribute;
    note.type = tolerance.GetType();
    note.word = wordOf(ToleranceWords, note.type);
    note.name = textOf(tolerance.GetSemanticName());
    note.values = {tolerance.GetValue()};
    note.text = textOf(tolerance.GetPresentationName());
    setPlace(note, tolerance, tolerance.HasPointText());
    return note;
}

Note noteFrom(XCAFDimTolObjects_DatumObject const & datum)
{
    Note note;
    note.number = DatumAttribute;
    note.word = "datum";
    note.name = textOf(datum.GetName());
    note.text = textOf(datum.GetPresentationName());
    setPlace(note, datum, datum.HasPointText());
    return note;
}

transl_tk::Annotation * annotationFrom(Note const & note)
{
    Triple const location(note.plane.Location());
    Triple const first(note.plane.XDirection());
    Triple const third(note.plane.Direction());
    Triple const text(note.textPoint);
    int const none[3] = {0, 0, 0};
    std::string const name = note.name.empty() ? note.word : note.name;
    return transl_tk::Annotation::create(0, location.values, first.values, third.values,
                                         text.values, static_cast<int>(note.points.size() / 3),
                                         note.points.data(), none, none, none, none, note.number,
                                         note.type, 0, 0, 0, name.c_str(), note.text.c_str());
}

void addNote(Note const & note, TDF_LabelSequence const & about, EntitiesByLabel const & entities,
             AttributeBook & attributes, Coverage & coverage)
{
    transl_tk::Annotation * const annotation = annotationFrom(note);
    std::vector<transl_tk::Base *> holders = {annotation};
    transl_tk::Part * part = nullptr;
    for (TDF_Label const & label : about) {
        LabelEntities const * const found = entities.Seek(label);
        if (found == nullptr)
            continue;
        holders.insert(holders.end(), found->entities.begin(), found->entities.end());
        part = part == nullptr ? found->part : part;
    }
    if (part != nullptr)
        part->addAnnotation(annotation);
    for (transl_tk::Base * const holder : holders) {
        if (note.number == DatumAttribute)
            attributes.add(holder, note.number, note.word.c_str(), note.name);
        else
            attributes.add(holder, note.number, note.word.c_str(), note.values);
    }
    coverage.exact(HtmlLoggerEntry::PMIs);
}

/// Adds all of one kind: `Attribute` is what stands on their labels.
template <class Attribute>
void addAll(TDF_LabelSequence const & labels, EntitiesByLabel const & entities,
            AttributeBook & attributes, Coverage & coverage)
{
    for (TDF_Label const & label : labels) {
        Handle(Attribute) attribute;
        if (!label.FindAttribute(Attribute::GetID(), attribute))
            continue;
        try {
            TDF_LabelSequence about;
            TDF_LabelSequence second;
            XCAFDoc_DocumentTool::DimTolTool(label)->GetRefShapeLabel(label, about, second);
            about.Append(second);
            addNote(noteFrom(*attribute->GetObject()), about, entities, attributes, coverage);
        } catch (Standard_Failure const & failure) {
            coverage.lost(HtmlLoggerEntry::PMIs, "",
                          std::string(failure.DynamicType()->Name()) + " " +
                              failure.GetMessageString());
        }
    }
}

} // namespace

void addPmi(TDocStd_Document const & document, EntitiesByLabel const & entities,
            AttributeBook & attributes, Coverage & coverage)
{
    auto const tool = XCAFDoc_DocumentTool::DimTolTool(document.Main());
    TDF_LabelSequence dimensions;
    TDF_LabelSequence tolerances;
    TDF_LabelSequence datums;
    tool->GetDimensionLabels(dimensions);
    tool->GetGeomToleranceLabels(tolerances);
    tool->GetDatumLabels(datums);
    addAll<XCAFDoc_Dimension>(dimensions, entities, attributes, coverage);
    addAll<XCAFDoc_GeomTolerance>(tolerances, entities, attributes, coverage);
    addAll<XCAFDoc_Datum>(datums, entities, attributes, coverage);
}

} // namespace step
