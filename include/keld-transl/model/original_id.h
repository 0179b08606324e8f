#ifndef KELD_TRANSL_MODEL_ORIGINAL_ID_H
#define KELD_TRANSL_MODEL_ORIGINAL_ID_H

#include <keld-transl/export.h>

namespace transl_tk {

/// The foreign CAD system's own handle of an entity: a pointer or an integer of 64 bits, which the
/// toolkit keeps and never interprets. Second base of `Edge`, `Fin` and `Face`.
class KELD_TRANSL_EXPORT OriginalID
{
public:
    OriginalID() noexcept = default;

    /// Keeps the pointer's bits.
    void setOriginalEnt(void * entity) noexcept;

    /// Keeps the number.
    void setOriginalEnt(long long entity) noexcept;

    /// The 64 bits that were kept last, 0 at first. Whoever stored a pointer casts it back.
    long long castToInt() const noexcept { return m_OriginalEnt; }

private:
    long long m_OriginalEnt = 0;
};

} // namespace transl_tk

#endif
