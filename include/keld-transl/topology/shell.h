#ifndef KELD_TRANSL_TOPOLOGY_SHELL_H
#define KELD_TRANSL_TOPOLOGY_SHELL_H

#include <keld-transl/model/base.h>

namespace transl_tk {

class Face;

/// Faces that hang together.
class KELD_TRANSL_EXPORT Shell : public Base
{
protected:
    Shell() = default;
    explicit Shell(int const & id) : Base(id) {}
    ~Shell() override;

public:
    Shell(Shell const &) = default;
    Shell & operator=(Shell const &) = default;

    /// Makes a shell of the current sub-pool, without faces and with the flag false. Null when `id`
    /// is taken. See `Base` for the rules of ids.
    static Shell * create(int const & id);
    /// Frees the shell and its faces, in order.
    static void destruct(Shell * shell);

    int getEntityKind() override = 0;
    /// Appends a face, which the shell owns from now on, without any check: a null stays in the
    /// list, and a face must not be added twice, here or elsewhere.
    virtual void addFace(Face * face) = 0;
    /// A flag that is carried and not interpreted.
    virtual bool getShellFlag() = 0;
    virtual void setShellFlag(bool const & flag) = 0;
    /// Calls `visit` for each face in order. Stops at the first false and returns false; true
    /// otherwise, also when there is none.
    virtual bool forEachFace(bool (*visit)(Face *, void *), void * user) = 0;
};

} // namespace transl_tk

#endif
