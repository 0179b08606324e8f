#ifndef KELD_STEP_EXPORT_EDGE_TRACES_H
#define KELD_STEP_EXPORT_EDGE_TRACES_H

#include "export/kernel_geometry.h"

#include <TopoDS_Edge.hxx>
#include <vector>

class TopoDS_Face;

namespace step {

/// The edges of one face, with their UV curves in it.
class EdgeTraces
{
public:
    /// Takes one use of `edge`: along the edge or against it. `uv` may have no curve.
    void add(TopoDS_Edge const & edge, bool along, UvStretch const & uv);

    /// Gives the edges their curves on the surface of `face`. One that is missing is worked out. On
    /// a plane the kernel works out all of them by itself.
    void setOn(TopoDS_Face const & face) const;

private:
    /// The UV curve of the fin along the edge, and that of the other.
    struct Trace
    {
        TopoDS_Edge edge;
        UvStretch along = {};
        UvStretch against = {};
        bool hasAlong = false;
        bool hasAgainst = false;
    };

    static void set(TopoDS_Face const & face, Trace const & trace);

    std::vector<Trace> m_Traces;
};

} // namespace step

#endif
