#ifndef KELD_TRANSL_TOPOLOGY_LOOP_H
#define KELD_TRANSL_TOPOLOGY_LOOP_H

#include <keld-transl/model/base.h>

namespace transl_tk {

class Fin;

/// A closed boundary of a face: fins in order.
class KELD_TRANSL_EXPORT Loop : public Base
{
protected:
    Loop() = default;
    explicit Loop(int const & id) : Base(id) {}
    ~Loop() override;

public:
    Loop(Loop const &) = default;
    Loop & operator=(Loop const &) = default;

    /// Makes a loop of the current sub-pool, without fins. Null when `id` is taken. See `Base` for
    /// the rules of ids.
    static Loop * create(int const & id);
    /// Frees the loop and its fins, in order.
    static void destruct(Loop * loop);

    int getEntityKind() override = 0;
    /// Appends a fin, which the loop owns from now on, without any check: a null stays in the list,
    /// and a fin must not be added twice, here or elsewhere.
    virtual void addFin(Fin * fin) = 0;
    /// Calls `visit` for each fin in order. Stops at the first false and returns false; true
    /// otherwise, also when there is none.
    virtual bool forEachFin(bool (*visit)(Fin *, void *), void * user) = 0;
};

} // namespace transl_tk

#endif
