#ifndef KELD_TRANSL_TOPOLOGY_SURFACE_H
#define KELD_TRANSL_TOPOLOGY_SURFACE_H

#include <keld-transl/geom/surface.h>
#include <keld-transl/model/base.h>

namespace transl_tk {

/// The carrier of a surface, for all faces that lie on it.
class KELD_TRANSL_EXPORT Surface : public Base
{
protected:
    Surface() = default;
    explicit Surface(int const & id) : Base(id) {}
    ~Surface() override;

public:
    Surface(Surface const &) = default;
    Surface & operator=(Surface const &) = default;

    /// Makes a carrier of the current sub-pool. Adopts `surface`, of any kind or null, when it
    /// succeeds. Null when `id` is taken: the surface then stays the caller's. See `Base` for the
    /// rules of ids.
    static Surface * create(int const & id, geom::Surface * surface);
    static void destruct(Surface * carrier);

    int getEntityKind() override = 0;
    /// The surface, which stays the carrier's.
    virtual geom::Surface * getSurface() = 0;
};

} // namespace transl_tk

#endif
