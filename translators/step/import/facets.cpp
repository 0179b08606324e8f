#include "import/facets.h"

#include "import/kernel_faults.h"
#include "import/topology.h"

#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/tri_strip.h>
#include <keld-translator-kit/options.h>
#include <keld-translator-kit/run.h>

#include <BRepBndLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <GeomLib.hxx>
#include <Poly_Triangulation.hxx>
#include <Precision.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <charconv>
#include <cmath>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;
using Colour = AttributeBook::Colour;

double diagonalOf(TopoDS_Shape const & shape)
{
    Bnd_Box box;
    BRepBndLib::Add(shape, box, false);
    return box.IsVoid() ? 0 : std::sqrt(box.SquareExtent());
}

std::string wordsOf(double number)
{
    char digits[32];
    return {
        digits,
        std::to_chars(digits, digits + sizeof(digits), number, std::chars_format::general, 4).ptr};
}

/// The mesh of one body.
struct Mesh
{
    std::vector<float> vertices;
    std::vector<float> normals;
    std::vector<unsigned char> colours;
    std::vector<int> indices;
    bool hasColours = false;
};

void append(std::vector<float> & values, gp_XYZ const & xyz)
{
    values.insert(values.end(), {static_cast<float>(xyz.X()), static_cast<float>(xyz.Y()),
                                 static_cast<float>(xyz.Z())});
}

void addFace(Mesh & mesh, TopoDS_Face const & face, Poly_Triangulation const & triangles,
             gp_Trsf const & place, std::optional<Colour> const & colour)
{
    bool const turned = face.Orientation() == TopAbs_REVERSED;
    int const base = static_cast<int>(mesh.vertices.size() / 3);
    auto const surface = BRep_Tool::Surface(face);
    for (int i = 1; i <= triangles.NbNodes(); ++i) {
        append(mesh.vertices, triangles.Node(i).Transformed(place).XYZ());
        gp_Dir normal(0, 0, 1);
        if (triangles.HasUVNodes())
            GeomLib::NormEstim(surface, triangles.UVNode(i), Precision::Confusion(), normal);
        append(mesh.normals, (turned ? normal.Reversed() : normal).XYZ());
        constexpr Colour Grey = {192, 192, 192, 100};
        Colour const shown = colour.value_or(Grey);
        mesh.colours.insert(mesh.colours.end(), {shown.red, shown.green, shown.blue});
    }
    mesh.hasColours = mesh.hasColours || colour.has_value();
    for (int i = 1; i <= triangles.NbTriangles(); ++i) {
        int a = 0;
        int b = 0;
        int c = 0;
        triangles.Triangle(i).Get(a, b, c);
        if (turned)
            std::swap(b, c);
        mesh.indices.insert(mesh.indices.end(), {base + a - 1, base + b - 1, base + c - 1});
    }
}

transl_tk::TriStrip * stripFrom(Mesh & mesh)
{
    return transl_tk::TriStrip::create(
        0, mesh.vertices.data(), mesh.hasColours ? mesh.colours.data() : nullptr,
        static_cast<int>(mesh.vertices.size() / 3), mesh.normals.data(),
        static_cast<int>(mesh.normals.size() / 3), mesh.indices.data(),
        static_cast<int>(mesh.indices.size()), false);
}

} // namespace

FacetSettings::FacetSettings(translator_kit::Options const & options)
    : m_Wanted(options.flag("facets").value_or(false)), m_Deflection(options.number("deflection")),
      m_Angle(options.number("angular_deflection"))
{
    m_Wanted = m_Wanted || m_Deflection.has_value();
}

double FacetSettings::angle() const
{
    constexpr double Degrees = 20;
    constexpr double Finest = 0.5;
    return std::max(m_Angle.value_or(Degrees), Finest) * M_PI / 180;
}

double FacetSettings::deflectionFor(TopoDS_Shape const & part, translator_kit::Run & run) const
{
    constexpr double UsualShare = 1e-3;
    constexpr double SmallestShare = 1e-5;
    double const diagonal = std::max(diagonalOf(part), Precision::Confusion());
    double const asked = m_Deflection.value_or(UsualShare * diagonal);
    if (asked >= SmallestShare * diagonal)
        return asked;
    run.warning("A deflection of " + wordsOf(asked) +
                " mm would make too many facets of a part of " + wordsOf(diagonal) +
                " mm; it is raised to " + wordsOf(SmallestShare * diagonal) + " mm.");
    return SmallestShare * diagonal;
}

void addFacets(TopoDS_Shape const & partShape, transl_tk::Part & part, Topology const & topology,
               FacetSettings const & settings, AttributeBook const & attributes,
               translator_kit::Run & run, Coverage & coverage,
               Handle(TransferProgress) const & progress)
{
    if (topology.bodies().empty())
        return;
    IMeshTools_Parameters parameters;
    parameters.Deflection = settings.deflectionFor(partShape, run);
    parameters.Angle = settings.angle();
    try {
        KernelFaults const faults;
        callKernel([&] {
            BRepMesh_IncrementalMesh const meshing(partShape, parameters, progress->Start());
        });
    } catch (Standard_Failure const & failure) {
        coverage.lost(HtmlLoggerEntry::Facet, "",
                      std::string("the tessellation failed: ") + failure.DynamicType()->Name() +
                          " " + failure.GetMessageString());
    }
    NCollection_DataMap<TopoDS_Shape, transl_tk::Base *, TopTools_ShapeMapHasher> faces;
    for (Arrived const & face : topology.faces())
        faces.Bind(face.shape, face.entity);
    auto const partColour = attributes.colourOf(&part);
    for (Arrived const & body : topology.bodies()) {
        auto const bodyColour = attributes.colourOf(body.entity);
        Mesh mesh;
        for (TopExp_Explorer found(body.shape, TopAbs_FACE); found.More(); found.Next()) {
            TopoDS_Face const face = TopoDS::Face(found.Current());
            TopLoc_Location location;
            auto const triangles = BRep_Tool::Triangulation(face, location);
            if (triangles.IsNull()) {
                coverage.lost(HtmlLoggerEntry::Facet, "", "a face has got no facets");
                continue;
            }
            auto * const * const entity = faces.Seek(face);
            auto colour = entity == nullptr ? std::nullopt : attributes.colourOf(*entity);
            if (!colour)
                colour = bodyColour ? bodyColour : partColour;
            addFace(mesh, face, *triangles, location.Transformation(), colour);
            coverage.exact(HtmlLoggerEntry::Facet, triangles->NbTriangles());
        }
        if (!mesh.indices.empty())
            static_cast<transl_tk::Body *>(body.entity)->addTriStrip(stripFrom(mesh));
    }
}

} // namespace step
