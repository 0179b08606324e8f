#ifndef KELD_TRANSL_MODEL_BASE_H
#define KELD_TRANSL_MODEL_BASE_H

#include <keld-transl/export.h>

namespace transl_tk {

/// The numbers that `Base::getEntityKind` returns. They also stand in the model stream.
enum EntityKind : int {
    EntityKindBody = 1,
    EntityKindCurve3D = 2,
    EntityKindUVCurve = 3,
    EntityKindEdge = 4,
    EntityKindFace = 5,
    EntityKindFin = 6,
    EntityKindHierarchy = 7, ///< Assembly, Part and Instance alike
    EntityKindLoop = 8,
    EntityKindPoint3D = 9,
    EntityKindCartesianCoord = 10,
    EntityKindShell = 11,
    EntityKindSurface = 12,
    EntityKindTriStrip = 13,
    EntityKindVertex = 14,
    EntityKindSpotWeld = 15,
    EntityKindAnnotation = 16
};

/// Root of all entities: whatever lives in the store of a `SubPool`.
///
/// Every concrete kind X is made by a static `X::create` and freed by a static `X::destruct`.
///
/// The first argument of every `create` is the id: 0 takes the largest id in the kind's store plus
/// 1 (1 in an empty store); any other number, negative ones included, is taken as given. `create`
/// returns null, and changes nothing, when the id is taken or when 0 is asked for and the largest
/// id is 2147483647. There must be a `Pool`. The entity belongs to the current `SubPool` until
/// somebody destroys it; the returned pointer obliges nobody to free it.
///
/// `destruct` of null does nothing. A destroyed entity leaves the store of the sub-pool that is
/// current at that moment.
///
/// Entities belong to one thread at a time, together with the whole model.
class KELD_TRANSL_EXPORT Base
{
protected:
    Base() noexcept = default;
    explicit Base(int const & id) noexcept : m_Id(id) {}
    virtual ~Base() = default;

public:
    Base(Base const &) = default;
    Base & operator=(Base const &) = default;

    /// The kind of this entity, one of `EntityKind`.
    virtual int getEntityKind() = 0;

    /// Identifier of this entity, unique among its kind in one sub-pool. Entities of different
    /// kinds may share a number; assemblies, parts and instances count as one kind.
    int getId() const noexcept { return m_Id; }

private:
    int m_Id = 0;
};

} // namespace transl_tk

#endif
