#ifndef KELD_TRANSL_PRODUCT_PART_H
#define KELD_TRANSL_PRODUCT_PART_H

#include <keld-transl/product/component.h>

namespace transl_tk {

class Annotation;
class Body;
class CartesianCoord;
class Curve3D;
class Edge;
class NodeTree;
class Point3D;
class SpotWeld;
class TriStrip;

/// A component that holds geometry. It owns what it lists, edges apart: those stay in their store
/// when the part goes.
class KELD_TRANSL_EXPORT Part : public Component
{
protected:
    Part() = default;
    explicit Part(int const & id) : Component(id) {}
    ~Part() override;

public:
    Part(Part const &) = default;
    Part & operator=(Part const &) = default;

    /// Makes a part of the current sub-pool, with an empty parameter tree and no contents. The name
    /// is made unique; null counts as empty. Null when `id` is taken; see `Base` for the rules of
    /// ids.
    static Part * create(int const & id, char const * name);

    /// The parameter tree, which stays the part's.
    virtual NodeTree * getNodeTree() = 0;

    /// A text that the toolkit passes on and draws no meaning from. Null counts as empty.
    virtual char const * getPartLabel() = 0;
    virtual void setPartLabel(char const * label) = 0;

    /// Call `callback` for what the part lists, in order of adding. Stop at the first false and
    /// return it.
    virtual bool forEachAnnotation(bool (*callback)(Annotation *, void *), void * user) = 0;
    virtual bool forEachEdge(bool (*callback)(Edge *, void *), void * user) = 0;
    virtual bool forEachCurve(bool (*callback)(Curve3D *, void *), void * user) = 0;
    virtual bool forEachTriStrip(bool (*callback)(TriStrip *, void *), void * user) = 0;
    virtual bool forEachCartesianCoord(bool (*callback)(CartesianCoord *, void *), void * user) = 0;
    virtual bool forEachSpotWeld(bool (*callback)(SpotWeld *, void *), void * user) = 0;
    virtual bool forEachPoint(bool (*callback)(Point3D *, void *), void * user) = 0;
    virtual bool forEachBody(bool (*callback)(Body *, void *), void * user) = 0;

    /// Append to what the part lists. Null is passed over; nobody checks for a repetition.
    virtual void addAnnotation(Annotation * annotation) = 0;
    virtual void addEdge(Edge * edge) = 0;
    virtual void addCurve(Curve3D * curve) = 0;
    virtual void addTriStrip(TriStrip * strip) = 0;
    virtual void addCartesianCoord(CartesianCoord * coord) = 0;
    virtual void addSpotWeld(SpotWeld * weld) = 0;
    virtual void addPoint(Point3D * point) = 0;
    virtual void addBody(Body * body) = 0;
};

} // namespace transl_tk

#endif
