#ifndef KELD_STEP_IMPORT_FACETS_H
#define KELD_STEP_IMPORT_FACETS_H

#include "attribute_book.h"
#include "coverage.h"
#include "transfer_progress.h"

#include <optional>

class TopoDS_Shape;

namespace translator_kit {
class Options;
class Run;
} // namespace translator_kit

namespace transl_tk {
class Part;
}

namespace step {

class Topology;

/// How fine facets are, by the options of a run: "facets" asks for them; "deflection" is how far
/// they may lie from the surface, in millimetres, and asks for them as well; "angular_deflection"
/// is the angle between neighbours, in degrees.
class FacetSettings
{
public:
    explicit FacetSettings(translator_kit::Options const & options);

    bool wanted() const { return m_Wanted; }
    double angle() const; ///< in radians

    /// The deflection for a part. Without an option, a thousandth of the part's diagonal. One that
    /// would make more facets than anybody can use is raised, with a warning in the log.
    double deflectionFor(TopoDS_Shape const & part, translator_kit::Run & run) const;

private:
    bool m_Wanted;
    std::optional<double> m_Deflection;
    std::optional<double> m_Angle;
};

/// Gives each body of a part its facets, with a normal for each vertex, and colours where a face,
/// its body or the part has one. `partShape` holds the shapes of the bodies. `progress` follows
/// the work.
void addFacets(TopoDS_Shape const & partShape, transl_tk::Part & part, Topology const & topology,
               FacetSettings const & settings, AttributeBook const & attributes,
               translator_kit::Run & run, Coverage & coverage,
               opencascade::handle<TransferProgress> const & progress);

} // namespace step

#endif
