#include "step_forms.h"

#include "build_shapes.h"

#include <GeomToStep_MakeCurve.hxx>
#include <GeomToStep_MakeDirection.hxx>
#include <Geom_OffsetCurve.hxx>
#include <Interface_EntityIterator.hxx>
#include <Interface_Graph.hxx>
#include <STEPConstruct.hxx>
#include <StepData_GlobalFactors.hxx>
#include <StepData_StepModel.hxx>
#include <StepGeom_BSplineCurveWithKnots.hxx>
#include <StepGeom_BSplineSurfaceWithKnots.hxx>
#include <StepGeom_BezierCurve.hxx>
#include <StepGeom_BezierSurface.hxx>
#include <StepGeom_Direction.hxx>
#include <StepGeom_GeometricRepresentationItem.hxx>
#include <StepGeom_OffsetCurve3d.hxx>
#include <StepGeom_OffsetSurface.hxx>
#include <StepGeom_Pcurve.hxx>
#include <StepGeom_RectangularTrimmedSurface.hxx>
#include <StepGeom_SurfaceCurve.hxx>
#include <StepGeom_SweptSurface.hxx>
#include <StepRepr_RepresentationContext.hxx>
#include <StepShape_EdgeCurve.hxx>
#include <StepShape_FaceSurface.hxx>
#include <StepVisual_MechanicalDesignGeometricPresentationRepresentation.hxx>
#include <TCollection_HAsciiString.hxx>
#include <Transfer_FinderProcess.hxx>
#include <XSControl_TransferWriter.hxx>
#include <XSControl_WorkSession.hxx>
#include <map>
#include <vector>

namespace vise {

namespace {

Handle(TCollection_HAsciiString) noName()
{
    return new TCollection_HAsciiString("");
}

bool isUnitRange(int count, double first, double last)
{
    return count == 2 && first == 0 && last == 1;
}

/// Null where the curve has several segments. A Bezier curve runs from 0 to 1.
Handle(StepGeom_Curve) bezierOf(Handle(StepGeom_Curve) const & curve)
{
    auto const spline = Handle(StepGeom_BSplineCurveWithKnots)::DownCast(curve);
    if (spline.IsNull() ||
        !isUnitRange(spline->NbKnots(), spline->KnotsValue(1), spline->KnotsValue(2)))
        return {};
    Handle(StepGeom_BezierCurve) const result = new StepGeom_BezierCurve;
    result->Init(noName(), spline->Degree(), spline->ControlPointsList(), StepGeom_bscfUnspecified,
                 spline->ClosedCurve(), spline->SelfIntersect());
    return result.get();
}

Handle(StepGeom_Surface) bezierOf(Handle(StepGeom_Surface) const & surface)
{
    auto const spline = Handle(StepGeom_BSplineSurfaceWithKnots)::DownCast(surface);
    if (spline.IsNull() ||
        !isUnitRange(spline->NbUKnots(), spline->UKnotsValue(1), spline->UKnotsValue(2)) ||
        !isUnitRange(spline->NbVKnots(), spline->VKnotsValue(1), spline->VKnotsValue(2)))
        return {};
    Handle(StepGeom_BezierSurface) const result = new StepGeom_BezierSurface;
    result->Init(noName(), spline->UDegree(), spline->VDegree(), spline->ControlPointsList(),
                 StepGeom_bssfUnspecified, spline->UClosed(), spline->VClosed(),
                 spline->SelfIntersect());
    return result.get();
}

Handle(StepGeom_Curve) curveOf(StepShape_EdgeCurve const & edge)
{
    auto const onSurface = Handle(StepGeom_SurfaceCurve)::DownCast(edge.EdgeGeometry());
    return onSurface.IsNull() ? edge.EdgeGeometry() : onSurface->Curve3d();
}

void setCurve(StepShape_EdgeCurve & edge, Handle(StepGeom_Curve) const & curve)
{
    auto const onSurface = Handle(StepGeom_SurfaceCurve)::DownCast(edge.EdgeGeometry());
    if (onSurface.IsNull())
        edge.SetEdgeGeometry(curve);
    else
        onSurface->SetCurve3d(curve);
}

/// Puts Bezier curves and surfaces into the entities that refer to splines.
class BezierForms
{
public:
    void useIn(Handle(Standard_Transient) const & entity)
    {
        if (auto const edge = Handle(StepShape_EdgeCurve)::DownCast(entity)) {
            auto const curve = replacement(curveOf(*edge));
            if (!curve.IsNull())
                setCurve(*edge, curve);
        } else if (auto const swept = Handle(StepGeom_SweptSurface)::DownCast(entity)) {
            auto const curve = replacement(swept->SweptCurve());
            if (!curve.IsNull())
                swept->SetSweptCurve(curve);
        } else if (auto const face = Handle(StepShape_FaceSurface)::DownCast(entity)) {
            auto const surface = replacement(face->FaceGeometry());
            if (!surface.IsNull())
                face->SetFaceGeometry(surface);
        } else if (auto const pcurve = Handle(StepGeom_Pcurve)::DownCast(entity)) {
            useInBasis(*pcurve);
        } else if (auto const offset = Handle(StepGeom_OffsetSurface)::DownCast(entity)) {
            useInBasis(*offset);
        } else if (auto const trimmed =
                       Handle(StepGeom_RectangularTrimmedSurface)::DownCast(entity)) {
            useInBasis(*trimmed);
        }
    }

private:
    template <class Holder> void useInBasis(Holder & holder)
    {
        auto const surface = replacement(holder.BasisSurface());
        if (!surface.IsNull())
            holder.SetBasisSurface(surface);
    }

    /// One for all who refer to `old`; null where it stays.
    template <class Shape>
    opencascade::handle<Shape> replacement(opencascade::handle<Shape> const & old)
    {
        auto const known = m_Replacements.find(old.get());
        if (known != m_Replacements.end())
            return opencascade::handle<Shape>::DownCast(known->second);
        opencascade::handle<Shape> const made = bezierOf(old);
        m_Replacements.emplace(old.get(), made);
        return made;
    }

    std::map<Standard_Transient const *, Handle(Standard_Transient)> m_Replacements;
};

Handle(StepGeom_Curve) offsetCurveOf(Geom_OffsetCurve const & offset)
{
    GeomToStep_MakeCurve const basis(offset.BasisCurve());
    GeomToStep_MakeDirection const direction(offset.Direction());
    if (!basis.IsDone() || !direction.IsDone())
        throw BuildFailure("an offset curve has no form in a STEP file");
    Handle(StepGeom_Curve) const bezier = bezierOf(basis.Value());
    Handle(StepGeom_OffsetCurve3d) const result = new StepGeom_OffsetCurve3d;
    // The kernel takes the tangent crossed with the direction, STEP the direction with the tangent.
    result->Init(noName(), bezier.IsNull() ? basis.Value() : bezier,
                 -offset.Offset() / StepData_GlobalFactors::Intance().LengthFactor(),
                 StepData_LFalse, direction.Value());
    return result.get();
}

/// What nothing refers to. The kernel's writer comes to the colours of parts by their addresses,
/// which differ from run to run: they are put into the order of the parts.
std::vector<Handle(Standard_Transient)> rootsInOrder(Handle(StepData_StepModel) const & model)
{
    std::vector<Handle(Standard_Transient)> result;
    std::map<int, Handle(Standard_Transient)> colours;
    Interface_Graph const graph(model);
    for (Interface_EntityIterator root = graph.RootEntities(); root.More(); root.Next()) {
        // Its place has been taken by another form.
        if (root.Value()->IsKind(STANDARD_TYPE(StepGeom_GeometricRepresentationItem)))
            continue;
        using Presentation = StepVisual_MechanicalDesignGeometricPresentationRepresentation;
        auto const presentation = Handle(Presentation)::DownCast(root.Value());
        if (presentation.IsNull())
            result.push_back(root.Value());
        else
            colours.emplace(model->Number(presentation->ContextOfItems()), presentation);
    }
    for (auto const & [number, presentation] : colours)
        result.push_back(presentation);
    return result;
}

} // namespace

void useOffsetCurves(STEPControl_Writer & writer, std::vector<OffsetEdge> const & offsetEdges)
{
    auto const process = writer.WS()->TransferWriter()->FinderProcess();
    for (OffsetEdge const & offset : offsetEdges) {
        auto const edge =
            Handle(StepShape_EdgeCurve)::DownCast(STEPConstruct::FindEntity(process, offset.edge));
        auto const curve = Handle(Geom_OffsetCurve)::DownCast(offset.curve);
        if (edge.IsNull() || curve.IsNull())
            throw BuildFailure("an offset edge is not in the file");
        setCurve(*edge, offsetCurveOf(*curve));
    }
}

void useBezierForms(Handle(StepData_StepModel) const & model)
{
    BezierForms forms;
    for (int i = 1; i <= model->NbEntities(); ++i)
        forms.useIn(model->Value(i));

    // What nothing refers to any more leaves the file; what is new enters it.
    std::vector<Handle(Standard_Transient)> const roots = rootsInOrder(model);
    model->ClearEntities();
    for (Handle(Standard_Transient) const & root : roots)
        model->AddWithRefs(root);
}

} // namespace vise
