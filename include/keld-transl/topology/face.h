#ifndef KELD_TRANSL_TOPOLOGY_FACE_H
#define KELD_TRANSL_TOPOLOGY_FACE_H

#include <keld-transl/model/base.h>
#include <keld-transl/model/original_id.h>

namespace transl_tk {

class Loop;
class Surface;

/// A piece of a surface within its loops. Faces share surfaces: one goes with its last face.
class KELD_TRANSL_EXPORT Face : public Base, public OriginalID
{
protected:
    Face() = default;
    explicit Face(int const & id) : Base(id) {}
    ~Face() override;

public:
    Face(Face const &) = default;
    Face & operator=(Face const &) = default;

    /// Makes a face of the current sub-pool, with an empty label, the sense true and no loops, and
    /// enters it among the users of `surface`, which may be null. Null when `id` is taken. See
    /// `Base` for the rules of ids.
    static Face * create(int const & id, Surface * surface);
    /// Frees the face, its surface when no other face uses it, and then its loops, in order. A
    /// surface that somebody destroyed before is left alone.
    static void destruct(Face * face);

    int getEntityKind() override = 0;
    /// Appends a loop, which the face owns from now on, without any check: a null stays in the
    /// list, and a loop must not be added twice, here or elsewhere.
    virtual void addLoop(Loop * loop) = 0;
    /// The sense is carried and not interpreted.
    virtual void setSense(bool const & sense) = 0;
    virtual Surface * getSurface() = 0;
    virtual bool getSense() = 0;
    /// The label, which is valid until it is set again.
    virtual char const * getLabel() = 0;
    /// Copies `label`; null counts as empty.
    virtual void setLabel(char const * label) = 0;
    /// Calls `visit` for each loop in order. Stops at the first false and returns false; true
    /// otherwise, also when there is none.
    virtual bool forEachLoop(bool (*visit)(Loop *, void *), void * user) = 0;
};

} // namespace transl_tk

#endif
