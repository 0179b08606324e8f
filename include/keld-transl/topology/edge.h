#ifndef KELD_TRANSL_TOPOLOGY_EDGE_H
#define KELD_TRANSL_TOPOLOGY_EDGE_H

#include <keld-transl/model/base.h>
#include <keld-transl/model/original_id.h>

namespace transl_tk {

class Curve3D;
class Vertex;

/// A piece of a curve between two vertices, which may be the same.
///
/// An edge shares its curve and its vertices with other edges: each of them goes with its last
/// edge. The edge itself goes with the last fin that refers to it; one that never had a fin lives
/// until somebody destroys it.
class KELD_TRANSL_EXPORT Edge : public Base, public OriginalID
{
protected:
    Edge() = default;
    explicit Edge(int const & id) : Base(id) {}
    ~Edge() override;

public:
    Edge(Edge const &) = default;
    Edge & operator=(Edge const &) = default;

    /// Makes an edge of the current sub-pool and enters it among the users of `curve`, `start` and
    /// `end`, each of which may be null. Null when `id` is taken. See `Base` for the rules of ids.
    static Edge * create(int const & id, Curve3D * curve, Vertex * start, Vertex * end,
                         bool const & sense);
    /// Frees the edge, and with it the curve and the vertices that have no other edge. One of them
    /// that somebody destroyed before is left alone.
    static void destruct(Edge * edge);

    int getEntityKind() override = 0;

    virtual Curve3D * getCurve() = 0;
    /// Makes the edge a user of another curve, or of none. The old curve is not freed, not even
    /// when it has lost its last user. The same holds for the vertices.
    virtual void setCurve(Curve3D * curve) = 0;
    virtual Vertex * getStartVertex() = 0;
    /// On an edge whose two vertices are the same this takes the edge from the users of the vertex
    /// that its other end still refers to.
    virtual void setStartVertex(Vertex * vertex) = 0;
    virtual Vertex * getEndVertex() = 0;
    virtual void setEndVertex(Vertex * vertex) = 0;
    /// The sense that was given to `create`; it is carried and not interpreted.
    virtual bool getSense() = 0;
};

} // namespace transl_tk

#endif
