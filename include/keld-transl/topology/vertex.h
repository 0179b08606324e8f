#ifndef KELD_TRANSL_TOPOLOGY_VERTEX_H
#define KELD_TRANSL_TOPOLOGY_VERTEX_H

#include <keld-transl/geom/point.h>
#include <keld-transl/model/base.h>

namespace transl_tk {

/// Where edges end: a point in space, or a parameter on the edge's curve.
///
/// A vertex is shared: it goes with the last edge that ends at it. One that never had an edge lives
/// until somebody destroys it.
class KELD_TRANSL_EXPORT Vertex : public Base
{
protected:
    Vertex() = default;
    explicit Vertex(int const & id) : Base(id) {}
    ~Vertex() override;

public:
    Vertex(Vertex const &) = default;
    Vertex & operator=(Vertex const &) = default;

    /// Makes a vertex at a parameter of its curve. See `Base` for the rules of ids.
    static Vertex * create(int const & id, double const & parameter);
    /// Makes a vertex in space. Adopts `point` when it succeeds. Null when `point` is null or `id`
    /// is taken: the point then stays the caller's.
    static Vertex * create(int const & id, geom::Point * point);
    static void destruct(Vertex * vertex);

    int getEntityKind() override = 0;
    /// Sets both: the point, which stays the vertex's, and 0; or null and the parameter.
    virtual void getGeometry(geom::Point *& point, double & parameter) = 0;
};

} // namespace transl_tk

#endif
