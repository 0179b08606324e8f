#include "import/pmi.h"

#include "import/placement.h"
#include "import/pmi_words.h"
#include "import/presentation.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/product/part.h>

#include <Standard_Failure.hxx>
#include <TColStd_HArray1OfReal.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Shape.hxx>
#include <XCAFDimTolObjects_DatumObject.hxx>
#include <XCAFDimTolObjects_DimensionObject.hxx>
#include <XCAFDimTolObjects_GeomToleranceObject.hxx>
#include <XCAFDoc_Datum.hxx>
#include <XCAFDoc_DimTolTool.hxx>
#include <XCAFDoc_Dimension.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_GeomTolerance.hxx>
#include <algorithm>
#include <gp_Ax2.hxx>
#include <gp_Pln.hxx>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;

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
    std::vector<double> points; ///< on the shape
    Presentation presentation;
    /// What else there is to say, by names.
    std::vector<std::pair<char const *, std::vector<std::string>>> words;
    std::vector<std::pair<char const *, std::vector<double>>> numbers;
    std::string missing; ///< what has no place in the model
};

void addPoint(std::vector<double> & points, gp_XYZ const & point)
{
    points.insert(points.end(), {point.X(), point.Y(), point.Z()});
}

void addWord(Note & note, char const * name, std::string const & word)
{
    if (!word.empty() && word != "none")
        note.words.push_back({name, {word}});
}

template <class Modifiers> void addModifiers(Note & note, Modifiers const & modifiers)
{
    std::vector<std::string> words;
    for (auto const modifier : modifiers)
        words.emplace_back(wordOf(modifier));
    if (!words.empty())
        note.words.emplace_back("modifiers", words);
}

/// Location, first and third axis.
void addAxes(Note & note, char const * name, gp_Ax2 const & axes)
{
    std::vector<double> numbers;
    addPoint(numbers, axes.Location().XYZ());
    addPoint(numbers, axes.XDirection().XYZ());
    addPoint(numbers, axes.Direction().XYZ());
    note.numbers.emplace_back(name, numbers);
}

template <class Object> void setPlace(Note & note, Object const & object, bool hasText)
{
    note.text = textOf(object.GetPresentationName());
    if (object.HasPlane())
        note.plane = object.GetPlane();
    if (hasText)
        note.textPoint = object.GetPointTextAttach();
    if (object.HasPoint())
        addPoint(note.points, object.GetPoint().XYZ());
    note.presentation = presentationFrom(object.GetPresentation());
}

Note noteFrom(XCAFDimTolObjects_DimensionObject const & dimension)
{
    Note note;
    note.number = DimensionAttribute;
    note.type = dimension.GetType();
    note.word = wordOf(dimension.GetType());
    note.name = textOf(dimension.GetSemanticName());
    if (auto const values = dimension.GetValues(); !values.IsNull())
        note.values.assign(values->Array1().begin(), values->Array1().end());
    if (note.values.empty())
        note.missing = "value";
    setPlace(note, dimension, dimension.HasTextPoint());
    if (dimension.HasPoint2())
        addPoint(note.points, dimension.GetPoint2().XYZ());

    if (dimension.HasQualifier())
        addWord(note, "qualifier", wordOf(dimension.GetQualifier()));
    bool isHole = false;
    XCAFDimTolObjects_DimensionFormVariance variance;
    XCAFDimTolObjects_DimensionGrade grade;
    if (dimension.IsDimWithClassOfTolerance() &&
        dimension.GetClassOfTolerance(isHole, variance, grade))
        addWord(note, "class of tolerance", toleranceClass(isHole, variance, grade));
    int before = 0;
    int behind = 0;
    dimension.GetNbOfDecimalPlaces(before, behind);
    if (before != 0 || behind != 0)
        note.numbers.push_back(
            {"decimal places", {static_cast<double>(before), static_cast<double>(behind)}});
    addModifiers(note, dimension.GetModifiers());
    gp_Dir direction;
    if (dimension.GetDirection(direction))
        note.numbers.push_back({"direction", {direction.X(), direction.Y(), direction.Z()}});
    for (int i = 0; i < dimension.NbDescriptions(); ++i)
        note.words.push_back(
            {"description",
             {textOf(dimension.GetDescription(i)), textOf(dimension.GetDescriptionName(i))}});
    if (!dimension.GetPath().IsNull())
        note.missing = "path";
    return note;
}

Note noteFrom(XCAFDimTolObjects_GeomToleranceObject const & tolerance)
{
    Note note;
    note.number = GeometricToleranceAttribute;
    note.type = tolerance.GetType();
    note.word = wordOf(tolerance.GetType());
    note.name = textOf(tolerance.GetSemanticName());
    // Where the kernel cannot read the value, it gives 0, which means something with a material
    // requirement alone.
    bool const hasRequirement = tolerance.GetMaterialRequirementModifier() !=
                                XCAFDimTolObjects_GeomToleranceMatReqModif_None;
    if (tolerance.GetValue() != 0 || hasRequirement)
        note.values = {tolerance.GetValue()};
    else
        note.missing = "value";
    setPlace(note, tolerance, tolerance.HasPointText());

    addWord(note, "zone", wordOf(tolerance.GetTypeOfValue()));
    addWord(note, "material requirement", wordOf(tolerance.GetMaterialRequirementModifier()));
    addWord(note, "zone modifier", wordOf(tolerance.GetZoneModifier()));
    if (tolerance.GetZoneModifier() != XCAFDimTolObjects_GeomToleranceZoneModif_None)
        note.numbers.push_back({"zone modifier value", {tolerance.GetValueOfZoneModifier()}});
    addModifiers(note, tolerance.GetModifiers());
    if (tolerance.GetMaxValueModifier() != 0)
        note.numbers.push_back({"largest value", {tolerance.GetMaxValueModifier()}});
    if (tolerance.HasAxis())
        addAxes(note, "axis", tolerance.GetAxis());
    if (tolerance.HasAffectedPlane())
        addAxes(note,
                tolerance.GetAffectedPlaneType() ==
                        XCAFDimTolObjects_ToleranceZoneAffectedPlane_Intersection
                    ? "intersection plane"
                    : "orientation plane",
                tolerance.GetAffectedPlane().Position().Ax2());
    return note;
}

Note noteFrom(XCAFDimTolObjects_DatumObject & datum)
{
    Note note;
    note.number = DatumAttribute;
    note.word = "datum";
    note.name = textOf(datum.GetName());
    setPlace(note, datum, datum.HasPointText());

    if (datum.GetPosition() != 0)
        note.numbers.push_back({"position", {static_cast<double>(datum.GetPosition())}});
    addModifiers(note, datum.GetModifiers());
    XCAFDimTolObjects_DatumModifWithValue modifier = XCAFDimTolObjects_DatumModifWithValue_None;
    double value = 0;
    datum.GetModifierWithValue(modifier, value);
    addWord(note, "modifier with value", wordOf(modifier));
    if (modifier != XCAFDimTolObjects_DatumModifWithValue_None)
        note.numbers.push_back({"modifier value", {value}});
    if (datum.IsDatumTarget()) {
        addWord(note, "datum target", wordOf(datum.GetDatumTargetType()));
        note.numbers.push_back(
            {"datum target number", {static_cast<double>(datum.GetDatumTargetNumber())}});
        if (datum.HasDatumTargetParams()) {
            addAxes(note, "datum target axis", datum.GetDatumTargetAxis());
            note.numbers.push_back(
                {"datum target size", {datum.GetDatumTargetLength(), datum.GetDatumTargetWidth()}});
        }
        if (!datum.GetDatumTarget().IsNull())
            note.missing = "shape of the target";
    }
    return note;
}

transl_tk::Annotation * annotationFrom(Note const & note)
{
    Triple const location(note.plane.Location());
    Triple const first(note.plane.XDirection());
    Triple const third(note.plane.Direction());
    Triple const text(note.textPoint);
    int const none[3] = {0, 0, 0};
    int const counts[3] = {static_cast<int>(note.points.size() / 3),
                           static_cast<int>(note.presentation.lengths.size()), 0};
    std::string const name = note.name.empty() ? note.word : note.name;
    std::vector<double> points = note.points;
    points.insert(points.end(), note.presentation.points.begin(), note.presentation.points.end());
    return transl_tk::Annotation::create(0, location.values, first.values, third.values,
                                         text.values, static_cast<int>(points.size() / 3),
                                         points.data(), counts, none, none, none, note.number,
                                         note.type, 0, 0, 0, name.c_str(), note.text.c_str());
}

/// Moves notes of one document into the model.
class Notes
{
public:
    Notes(EntitiesByLabel const & entities, AttributeBook & attributes, Coverage & coverage)
        : m_Entities(entities), m_Attributes(attributes), m_Coverage(coverage)
    {}

    /// `Attribute` is what stands on the labels of one kind.
    template <class Attribute> void add(TDF_LabelSequence const & labels)
    {
        for (TDF_Label const & label : labels) {
            Handle(Attribute) attribute;
            if (!label.FindAttribute(Attribute::GetID(), attribute))
                continue;
            try {
                add(label, noteFrom(*attribute->GetObject()));
            } catch (Standard_Failure const & failure) {
                m_Coverage.lost(HtmlLoggerEntry::PMIs, "",
                                std::string(failure.DynamicType()->Name()) + " " +
                                    failure.GetMessageString());
            }
        }
    }

    /// Tells which datums a tolerance refers to. All three must have been added before.
    void addDatumSystem(TDF_Label const & tolerance)
    {
        auto * const * const holder = m_Annotations.Seek(tolerance);
        TDF_LabelSequence datums;
        if (holder == nullptr ||
            !XCAFDoc_DocumentTool::DimTolTool(tolerance)->GetDatumWithObjectOfTolerLabels(tolerance,
                                                                                          datums))
            return;
        std::vector<std::pair<int, int>> byPosition;
        for (TDF_Label const & label : datums) {
            Handle(XCAFDoc_Datum) datum;
            auto * const * const annotation = m_Annotations.Seek(label);
            if (annotation != nullptr && label.FindAttribute(XCAFDoc_Datum::GetID(), datum))
                byPosition.emplace_back(datum->GetObject()->GetPosition(), (*annotation)->getId());
        }
        std::stable_sort(byPosition.begin(), byPosition.end(),
                         [](auto const & a, auto const & b) { return a.first < b.first; });
        std::vector<int> ids;
        ids.reserve(byPosition.size());
        for (auto const & [position, id] : byPosition)
            ids.push_back(id);
        if (!ids.empty())
            m_Attributes.add(*holder, GeometricToleranceAttribute, "datum system", ids);
    }

private:
    void add(TDF_Label const & label, Note const & note)
    {
        TDF_LabelSequence about;
        TDF_LabelSequence second;
        XCAFDoc_DocumentTool::DimTolTool(label)->GetRefShapeLabel(label, about, second);
        about.Append(second);
        transl_tk::Annotation * const annotation = annotationFrom(note);
        m_Annotations.Bind(label, annotation);
        std::vector<transl_tk::Base *> holders = {annotation};
        transl_tk::Part * part = nullptr;
        std::string missing = note.missing;
        for (TDF_Label const & shape : about) {
            LabelEntities const * const found = m_Entities.Seek(shape);
            if (found == nullptr) {
                missing = "shape that it is about";
                continue;
            }
            holders.insert(holders.end(), found->entities.begin(), found->entities.end());
            part = part == nullptr ? found->part : part;
        }
        if (part != nullptr)
            part->addAnnotation(annotation);
        for (transl_tk::Base * const holder : holders) {
            if (note.number == DatumAttribute)
                m_Attributes.add(holder, note.number, note.word.c_str(), note.name);
            else
                m_Attributes.add(holder, note.number, note.word.c_str(), note.values);
        }
        addFacts(annotation, note);
        count(note, missing);
    }

    void addFacts(transl_tk::Annotation * annotation, Note const & note)
    {
        for (auto const & [name, words] : note.words)
            m_Attributes.add(annotation, note.number, name, words);
        for (auto const & [name, numbers] : note.numbers)
            m_Attributes.add(annotation, note.number, name, numbers);
        if (!note.presentation.lengths.empty())
            m_Attributes.add(annotation, note.number, "presentation", note.presentation.lengths);
    }

    void count(Note const & note, std::string missing)
    {
        if (!note.presentation.isWhole)
            missing = "part of its presentation";
        if (!missing.empty())
            m_Coverage.changed(HtmlLoggerEntry::PMIs, note.word + " without a " + missing);
        else if (!note.presentation.isExact)
            m_Coverage.changed(HtmlLoggerEntry::PMIs, note.word + " drawn with straight lines");
        else
            m_Coverage.exact(HtmlLoggerEntry::PMIs);
    }

    EntitiesByLabel const & m_Entities;
    AttributeBook & m_Attributes;
    Coverage & m_Coverage;
    NCollection_DataMap<TDF_Label, transl_tk::Annotation *, TDF_LabelMapHasher> m_Annotations;
};

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
    Notes notes(entities, attributes, coverage);
    notes.add<XCAFDoc_Dimension>(dimensions);
    notes.add<XCAFDoc_GeomTolerance>(tolerances);
    notes.add<XCAFDoc_Datum>(datums);
    for (TDF_Label const & tolerance : tolerances)
        notes.addDatumSystem(tolerance);
}

} // namespace step
