#ifndef KELD_TRANSL_TOPOLOGY_CARTESIAN_COORD_H
#define KELD_TRANSL_TOPOLOGY_CARTESIAN_COORD_H

#include <keld-transl/model/base.h>

namespace transl_tk {

/// A free-standing coordinate system of a model.
class KELD_TRANSL_EXPORT CartesianCoord : public Base
{
protected:
    CartesianCoord() = default;
    explicit CartesianCoord(int const & id) : Base(id) {}
    ~CartesianCoord() override;

public:
    CartesianCoord(CartesianCoord const &) = default;
    CartesianCoord & operator=(CartesianCoord const &) = default;

    /// Makes a coordinate system of the current sub-pool. All values are kept bit for bit, the
    /// third axis included. Null when `id` is taken; see `Base` for the rules of ids.
    static CartesianCoord * create(int const & id, double const (&origin)[3],
                                   double const (&first)[3], double const (&second)[3],
                                   double const (&third)[3]);
    static void destruct(CartesianCoord * coord);

    int getEntityKind() override = 0;
    virtual void getAxes(double (&origin)[3], double (&first)[3], double (&second)[3],
                         double (&third)[3]) = 0;
};

} // namespace transl_tk

#endif
