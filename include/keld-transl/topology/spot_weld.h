#ifndef KELD_TRANSL_TOPOLOGY_SPOT_WELD_H
#define KELD_TRANSL_TOPOLOGY_SPOT_WELD_H

#include <keld-transl/model/base.h>

namespace transl_tk {

/// A free-standing weld point of a model, with the names of the weld.
class KELD_TRANSL_EXPORT SpotWeld : public Base
{
protected:
    SpotWeld() = default;
    explicit SpotWeld(int const & id) : Base(id) {}
    ~SpotWeld() override;

public:
    SpotWeld(SpotWeld const &) = default;
    SpotWeld & operator=(SpotWeld const &) = default;

    /// Makes a weld of the current sub-pool that has no names. The coordinates are kept bit for
    /// bit. Null when `id` is taken; see `Base` for the rules of ids.
    static SpotWeld * create(int const & id, double const & x, double const & y, double const & z);
    static void destruct(SpotWeld * weld);

    int getEntityKind() override = 0;
    virtual void getCoordinates(double & x, double & y, double & z) = 0;

    /// Appends a copy of `name`.
    virtual void addWeldName(char const * name) = 0;

    /// Calls `callback` for every name in order. Stops at the first false and returns false;
    /// otherwise true. A name stays the weld's, and is valid during the call.
    virtual bool forEachWeldName(bool (*callback)(char const * name, void * user), void * user) = 0;
};

} // namespace transl_tk

#endif
