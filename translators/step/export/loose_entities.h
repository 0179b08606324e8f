#ifndef KELD_STEP_EXPORT_LOOSE_ENTITIES_H
#define KELD_STEP_EXPORT_LOOSE_ENTITIES_H

#include <vector>

namespace transl_tk {
class Base;
class Body;
class Curve3D;
class Edge;
class Face;
class Point3D;
class Shell;
class SubPool;
class TriStrip;
} // namespace transl_tk

namespace step {

/// What stands in a model without belonging to anything above it, such as bodies of no part.
struct LooseEntities
{
    explicit LooseEntities(transl_tk::SubPool & model);

    std::vector<transl_tk::Body *> bodies;
    std::vector<transl_tk::Shell *> shells;
    std::vector<transl_tk::Face *> faces;
    std::vector<transl_tk::Edge *> edges;
    std::vector<transl_tk::Curve3D *> curves;
    std::vector<transl_tk::Point3D *> points;
    std::vector<transl_tk::TriStrip *> strips;
};

} // namespace step

#endif
