#ifndef KELD_STEP_EXPORT_MODEL_FACETS_H
#define KELD_STEP_EXPORT_MODEL_FACETS_H

#include "coverage.h"
#include "export/shape_builder.h"
#include "import/facets.h"

#include <array>
#include <gp_GTrsf.hxx>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace transl_tk {
class Component;
class Hierarchy;
class TriStrip;
} // namespace transl_tk

namespace step {

/// Three corners, three coordinates each.
using Triangle = std::array<float, 9>;

/// Triangles that belong together, such as those of one part at one of its places.
struct Facets
{
    std::string name;
    std::vector<Triangle> triangles;
};

/// The facets of a whole model, each part's at all of its places. Bodies that have facets give
/// those; the shapes of the others are meshed.
class ModelFacets
{
public:
    ModelFacets(transl_tk::SubPool & model, std::string fallbackName, translator_kit::Run & run,
                Coverage & coverage);

    std::vector<Facets> gather();

private:
    using Corners = std::array<gp_XYZ, 3>;

    void add(transl_tk::Hierarchy & node, gp_GTrsf const & above);
    void addPart(transl_tk::Part & part, gp_GTrsf const & place);
    void addLoose();
    std::vector<Corners> facetsOf(std::vector<transl_tk::Body *> const & bodies,
                                  std::vector<transl_tk::TriStrip *> strips,
                                  std::vector<TopoDS_Shape> shapes);
    void addStrip(transl_tk::TriStrip & strip, std::vector<Corners> & corners);
    void addMesh(std::vector<TopoDS_Shape> const & shapes, std::vector<Corners> & corners);
    void place(std::string const & name, std::vector<Corners> const & corners,
               gp_GTrsf const & place);
    template <class Entities> void lose(Entities const & entities, Kind kind);

    transl_tk::SubPool & m_Model;
    std::string m_FallbackName;
    translator_kit::Run & m_Run;
    Coverage & m_Coverage;
    Coverage m_Exact; ///< counts what was made to be meshed, which goes no further
    ShapeBuilder m_Shapes;
    FacetSettings m_Settings;
    std::map<transl_tk::Part *, std::vector<Corners>> m_Parts;
    std::set<transl_tk::Component *> m_Open; ///< those whose children are being added
    std::vector<Facets> m_Facets;
};

} // namespace step

#endif
