#include "exchange/read_session.h"

#include "geom/ownerless.h"

namespace transl_tk {

void ReadSession::ownerless(geom::OwnedCurve curve)
{
    if (curve)
        m_OwnerlessCurves.push_back(std::move(curve));
}

void ReadSession::ownerless(geom::OwnedSurface surface)
{
    if (surface)
        m_OwnerlessSurfaces.push_back(std::move(surface));
}

void ReadSession::commit()
{
    for (geom::OwnedCurve & curve : m_OwnerlessCurves) {
        geom::rememberOwnerless(&m_SubPool, curve.get());
        curve.release();
    }
    for (geom::OwnedSurface & surface : m_OwnerlessSurfaces) {
        geom::rememberOwnerless(&m_SubPool, surface.get());
        surface.release();
    }
    for (std::string & text : m_TextList)
        m_SubPool.m_TextList.push_back(std::move(text));
    m_SubPool.m_FacesToSplit.insert(m_SubPool.m_FacesToSplit.end(), m_FacesToSplit.begin(),
                                    m_FacesToSplit.end());
    for (LogEntry const & entry : m_LogEntries)
        m_SubPool._logger()->addEntry(entry.text.c_str(), entry.type, entry.subType, entry.show);
}

void ReadSession::rollBack() noexcept
{
    while (!m_Made.empty()) {
        Run const run = m_Made.back();
        m_Made.pop_back();
        for (long long id = run.last; id >= run.first; --id)
            if (Base * const entity =
                    (m_SubPool.*run.store).m_Entities.lookup(static_cast<int>(id)))
                run.destruct(entity);
    }
}

} // namespace transl_tk
