#ifndef KELD_TRANSL_TOPOLOGY_BODY_H
#define KELD_TRANSL_TOPOLOGY_BODY_H

#include <keld-transl/model/base.h>

namespace transl_tk {

class Shell;
class TriStrip;

/// A named body: exact shells, facets, or both.
class KELD_TRANSL_EXPORT Body : public Base
{
protected:
    Body() = default;
    explicit Body(int const & id) : Base(id) {}
    ~Body() override;

public:
    Body(Body const &) = default;
    Body & operator=(Body const &) = default;

    /// Makes a body of the current sub-pool that holds nothing. Names of bodies need not differ; a
    /// null counts as empty. Null when `id` is taken. See `Base` for the rules of ids.
    static Body * create(int const & id, char const * name);
    /// Frees the body with its shells and then its facets, each in order.
    static void destruct(Body * body);

    int getEntityKind() override = 0;
    /// The name, which is valid until it is set again.
    virtual char const * getName() = 0;
    /// Copies `name`; null counts as empty.
    virtual void setName(char const * name) = 0;
    /// Appends facets or a shell, which the body owns from now on, without any check: a null stays
    /// in the list, and nothing must be added twice, here or elsewhere.
    virtual void addTriStrip(TriStrip * strip) = 0;
    virtual void addShell(Shell * shell) = 0;
    /// Calls `visit` for each one in order. Stops at the first false and returns false; true
    /// otherwise, also when there is none.
    virtual bool forEachTriStrip(bool (*visit)(TriStrip *, void *), void * user) = 0;
    virtual bool forEachShell(bool (*visit)(Shell *, void *), void * user) = 0;
};

} // namespace transl_tk

#endif
