#ifndef KELD_TRANSL_TOPOLOGY_TRI_STRIP_H
#define KELD_TRANSL_TOPOLOGY_TRI_STRIP_H

#include <keld-transl/model/base.h>

namespace transl_tk {

/// A mesh of triangles: the facets of a body, or a free element of a part.
///
/// Without indices the vertices are one strip in order: every three in a row are a triangle. With
/// indices they are the corners of a list of triangles, three indices each.
class KELD_TRANSL_EXPORT TriStrip : public Base
{
protected:
    TriStrip() = default;
    explicit TriStrip(int const & id) : Base(id) {}
    ~TriStrip() override;

public:
    /// How a sphere is tessellated.
    enum Type : int {
        LatitudeStrips = 0, ///< one strip round the sphere in bands of latitude, without indices
        ProjectedBox = 1    ///< the grid of a box projected on the sphere, indexed triangles
    };

    TriStrip(TriStrip const &) = default;
    TriStrip & operator=(TriStrip const &) = default;

    /// Makes a mesh of the current sub-pool from copies of the arrays: three floats for each vertex
    /// and normal, and three bytes, red, green and blue, for each vertex. `colours`, `normals` and
    /// `indices` may be null. Normals and indices whose count is not positive are not copied. The
    /// counts are kept as given all the same, and `flag` is kept and transported, nothing else.
    ///
    /// Null when `vertices` is null, when `vertexCount` is below 1, or when `id` is taken; see
    /// `Base` for the rules of ids.
    static TriStrip * create(int const & id, float const * vertices, unsigned char const * colours,
                             int const & vertexCount, float const * normals,
                             int const & normalCount, int const * indices, int const & indexCount,
                             bool const & flag);

    /// Makes the mesh of a sphere, with a normal and `colour` at every vertex.
    ///
    /// `LatitudeStrips` grows finer with the radius, in whatever units that is: a band for every
    /// half, and never fewer than 10. `ProjectedBox` always has 488 vertices and 972 triangles that
    /// face outward. A sphere of no radius has all vertices on its centre and no finite normals. A
    /// type of another number, a radius that is not finite, and one that takes more vertices than
    /// an int counts, give a mesh without anything in it. Null when `id` is taken.
    static TriStrip * create(int const & id, double const (&centre)[3], double const & radius,
                             unsigned char const (&colour)[3], TriStrip::Type const & type,
                             bool const & flag);
    static void destruct(TriStrip * strip);

    int getEntityKind() override = 0;

    /// The arrays themselves, which stay the mesh's; null for one that it does not have. The counts
    /// are those that it was made with.
    virtual void getData(float *& vertices, unsigned char *& colours, int & vertexCount,
                         float *& normals, int & normalCount, int *& indices, int & indexCount) = 0;

    virtual bool getStripFlag() = 0;

    /// Gives every vertex this colour, red, green and blue, also when there were no colours.
    virtual void setColor(unsigned char const (&colour)[3]) = 0;
};

} // namespace transl_tk

#endif
