#include "export/shape_builder.h"

#include "attribute_book.h"
#include "export/edge_traces.h"
#include "export/listed.h"

#include <keld-transl/geom/surface.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/model/sub_pool.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/uv_curve.h>

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_Curve.hxx>
#include <Geom_Curve.hxx>
#include <Geom_Surface.hxx>
#include <Precision.hxx>
#include <Standard_Failure.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Shell.hxx>
#include <TopoDS_Solid.hxx>
#include <TopoDS_Wire.hxx>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;

constexpr int DoubleValue = 5;

bool isSolid(TopoDS_Shape const & shape)
{
    return shape.ShapeType() == TopAbs_SOLID;
}

std::string wordsOf(Standard_Failure const & failure)
{
    std::string const words = failure.GetMessageString();
    return words.empty() ? failure.DynamicType()->Name() : words;
}

} // namespace

ShapeBuilder::ShapeBuilder(transl_tk::SubPool & model, Coverage & coverage) : m_Coverage(coverage)
{
    for (transl_tk::Attribute * const attribute : model.m_Attributes) {
        if (attribute->getType() != static_cast<int>(ToleranceAttribute) ||
            attribute->getNumValues() < 1 || attribute->getValue(0) == nullptr ||
            attribute->getValue(0)->getType() != DoubleValue)
            continue;
        std::pair<ShapeBuilder *, double> context(this, 0.0);
        attribute->getValue(0)->getValue(context.second);
        attribute->forEachEntity(
            [](transl_tk::Base * entity, void * user) {
                auto & [builder, tolerance] =
                    *static_cast<std::pair<ShapeBuilder *, double> *>(user);
                builder->m_Tolerances[entity] = tolerance;
                return true;
            },
            &context);
    }
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Part & part)
{
    BRep_Builder builder;
    TopoDS_Compound result;
    builder.MakeCompound(result);
    auto const add = [&](auto const & entities) {
        for (auto * const entity : entities) {
            TopoDS_Shape const shape = shapeOf(*entity);
            if (!shape.IsNull())
                builder.Add(result, shape);
        }
    };
    add(listed(part, &transl_tk::Part::forEachBody));
    add(listed(part, &transl_tk::Part::forEachEdge));
    add(listed(part, &transl_tk::Part::forEachCurve));
    add(listed(part, &transl_tk::Part::forEachPoint));
    return result.NbChildren() == 1 && isSolid(TopoDS_Iterator(result).Value())
               ? TopoDS_Iterator(result).Value()
               : result;
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Body & body)
{
    BRep_Builder builder;
    std::vector<transl_tk::Shell *> const shells = listed(body, &transl_tk::Body::forEachShell);
    if (shells.empty())
        return {};
    TopoDS_Shape & result = m_Made[&body];
    bool boundsSolid = true;
    for (auto * const shell : shells)
        boundsSolid = boundsSolid && shell->getShellFlag();
    if (!boundsSolid && shells.size() == 1) {
        result = shapeOf(*shells.front());
    } else {
        TopoDS_Solid solid;
        TopoDS_Compound compound;
        builder.MakeSolid(solid);
        builder.MakeCompound(compound);
        result = boundsSolid ? TopoDS_Shape(solid) : TopoDS_Shape(compound);
        for (auto * const shell : shells)
            builder.Add(result, shapeOf(*shell));
    }
    m_Coverage.exact(HtmlLoggerEntry::Body);
    return result;
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Shell & shell)
{
    BRep_Builder builder;
    TopoDS_Shell result;
    builder.MakeShell(result);
    for (auto * const face : listed(shell, &transl_tk::Shell::forEachFace)) {
        TopoDS_Shape const made = shapeOf(*face);
        if (!made.IsNull())
            builder.Add(result, made);
    }
    result.Closed(BRep_Tool::IsClosed(result));
    m_Coverage.exact(HtmlLoggerEntry::Shell);
    return result;
}

TopoDS_Shape ShapeBuilder::shapeOf(transl_tk::Face & face)
{
    try {
        TopoDS_Face const result = faceOf(face);
        m_Made[&face] = result;
        m_Coverage.exact(HtmlLoggerEntry::Face);
        return result;
    } catch (Standard_Failure const & failure) {
        fault(HtmlLoggerEntry::Face, face, wordsOf(failure));
        return {};
    }
}

TopoDS_Face ShapeBuilder::faceOf(transl_tk::Face & face)
{
    BRep_Builder builder;
    TopoDS_Face result;
    if (face.getSurface() == nullptr || face.getSurface()->getSurface() == nullptr)
        throw Standard_Failure("it has no surface");
    builder.MakeFace(result, surfaceOf(*face.getSurface()), toleranceOf(face));
    EdgeTraces traces;
    auto const loops = listed(face, &transl_tk::Face::forEachLoop);
    for (auto * const loop : loops)
        addLoop(result, *loop, face.getSense(), traces);
    if (loops.empty())
        builder.NaturalRestriction(result, true);
    traces.setOn(result);
    if (!face.getSense())
        result.Reverse();
    return result;
}

void ShapeBuilder::addLoop(TopoDS_Face & face, transl_tk::Loop & loop, bool faceSense,
                           EdgeTraces & traces)
{
    BRep_Builder builder;
    TopoDS_Wire wire;
    builder.MakeWire(wire);
    for (auto * const fin : listed(loop, &transl_tk::Loop::forEachFin)) {
        if (fin->getEdge() == nullptr)
            throw Standard_Failure("a fin has no edge");
        TopoDS_Edge const edge = edgeOf(*fin->getEdge());
        bool const along = (fin->getSense() == faceSense) == fin->getEdge()->getSense();
        builder.Add(wire, edge.Oriented(along ? TopAbs_FORWARD : TopAbs_REVERSED));
        auto * const uv = fin->getUVCurve();
        traces.add(edge, along,
                   uv != nullptr && uv->getCurve() != nullptr ? kernelUvCurve(*uv->getCurve())
                                                              : UvStretch());
        if (uv != nullptr)
            m_Coverage.exact(HtmlLoggerEntry::UVCurve);
        m_Coverage.exact(HtmlLoggerEntry::Fin);
    }
    wire.Closed(BRep_Tool::IsClosed(wire));
    builder.Add(face, wire);
    m_Coverage.exact(HtmlLoggerEntry::Loop);
}

TopoDS_Shape ShapeBuilder::madeFrom(transl_tk::Base const & entity) const
{
    auto const found = m_Made.find(&entity);
    return found == m_Made.end() ? TopoDS_Shape() : found->second;
}

Handle(Geom_Surface) ShapeBuilder::surfaceOf(transl_tk::Surface & surface)
{
    Handle(Geom_Surface) & result = m_Surfaces[&surface];
    if (!result.IsNull())
        return result;
    result = kernelSurface(*surface.getSurface());
    if (surface.getSurface()->getType() == geom::Surface::Ruled)
        m_Coverage.changed(HtmlLoggerEntry::Surface, "ruled surface as B-spline surface");
    else
        m_Coverage.exact(HtmlLoggerEntry::Surface);
    return result;
}

double ShapeBuilder::toleranceOf(transl_tk::Base const & entity) const
{
    auto const found = m_Tolerances.find(&entity);
    return found == m_Tolerances.end() ? Precision::Confusion() : found->second;
}

void ShapeBuilder::fault(Kind kind, transl_tk::Base const & entity, std::string const & words)
{
    std::string const number = std::to_string(entity.getId());
    m_Faults.push_back("The " + HtmlLoggerEntry::baseToStringMapping(kind) + " " + number +
                       " was left out: " + words + ".");
    m_Coverage.lost(kind, number, words);
}

} // namespace step
