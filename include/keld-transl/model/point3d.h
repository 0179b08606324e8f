#ifndef KELD_TRANSL_MODEL_POINT3D_H
#define KELD_TRANSL_MODEL_POINT3D_H

#include <keld-transl/model/base.h>

namespace transl_tk {

/// A free-standing point of a model.
class KELD_TRANSL_EXPORT Point3D : public Base
{
protected:
    Point3D() = default;
    explicit Point3D(int const & id) : Base(id) {}
    ~Point3D() override;

public:
    Point3D(Point3D const &) = default;
    Point3D & operator=(Point3D const &) = default;

    /// Makes a point of the current sub-pool. The coordinates are kept bit for bit. Null when `id`
    /// is taken; see `Base` for the rules of ids.
    static Point3D * create(int const & id, double const & x, double const & y, double const & z);
    static void destruct(Point3D * point);

    int getEntityKind() override = 0;
    virtual void getCoordinates(double & x, double & y, double & z) = 0;
};

} // namespace transl_tk

#endif
