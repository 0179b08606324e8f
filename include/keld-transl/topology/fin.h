#ifndef KELD_TRANSL_TOPOLOGY_FIN_H
#define KELD_TRANSL_TOPOLOGY_FIN_H

#include <keld-transl/model/base.h>
#include <keld-transl/model/original_id.h>

namespace transl_tk {

class Edge;
class UVCurve;

/// One side of an edge, as a face uses it, with the edge's trace in the face's parameters.
class KELD_TRANSL_EXPORT Fin : public Base, public OriginalID
{
protected:
    Fin() = default;
    explicit Fin(int const & id) : Base(id) {}
    ~Fin() override;

public:
    Fin(Fin const &) = default;
    Fin & operator=(Fin const &) = default;

    /// Makes a fin of the current sub-pool, without a UV curve, and enters it among the users of
    /// `edge`, which may be null. Null when `id` is taken. See `Base` for the rules of ids.
    static Fin * create(int const & id, Edge * edge, bool const & sense);
    /// Frees the fin, its UV curve, and the edge when it has no other fin. An edge that somebody
    /// destroyed before is left alone.
    static void destruct(Fin * fin);

    int getEntityKind() override = 0;

    virtual Edge * getEdge() = 0;
    /// The sense that was given to `create`; it is carried and not interpreted.
    virtual bool getSense() = 0;
    /// Adopts `curve`, which may be null. One that was set before is not freed.
    virtual void setUVCurve(UVCurve * curve) = 0;
    /// The UV curve, which stays the fin's; null at first.
    virtual UVCurve * getUVCurve() = 0;
};

} // namespace transl_tk

#endif
