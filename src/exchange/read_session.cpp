#include "exchange/read_session.h"

#include "geom/ownerless.h"

#include <algorithm>

namespace transl_tk {

void ReadSession::prepare(Ownership & entities, EntityStore SubPool::*store) const
{
    long long made = 0;
    for (Run const & run : m_Made)
        if (run.store == store)
            made += run.last - static_cast<long long>(run.first) + 1;
    entities.allMade = made == static_cast<long long>((m_SubPool.*store).m_Entities.size());
    entities.prepared = true;
    if (entities.allMade)
        return;
    std::copy_if(m_Made.begin(), m_Made.end(), std::back_inserter(entities.made),
                 [&](Run const & run) { return run.store == store; });
    std::sort(entities.made.begin(), entities.made.end(),
              [](Run const & a, Run const & b) { return a.first < b.first; });
}

bool ReadSession::isMade(Ownership const & entities, int id)
{
    auto const after =
        std::upper_bound(entities.made.begin(), entities.made.end(), id,
                         [](int value, Run const & run) { return value < run.first; });
    return after != entities.made.begin() && std::prev(after)->last >= id;
}

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

Attribute & ReadSession::makeAttribute(std::string const & name, Attribute::Type type)
{
    m_Attributes.reserve(m_Attributes.size() + 1);
    return *m_Attributes.emplace_back(Attribute::create(name.c_str(), type));
}

void ReadSession::linkChildren()
{
    for (Links const & links : m_Links)
        for (int const id : links.children)
            if (auto * const child = lookUp<Hierarchy>(m_SubPool, id))
                links.assembly->addChild(child);
}

void ReadSession::commit()
{
    linkChildren();
    for (geom::OwnedCurve & curve : m_OwnerlessCurves) {
        geom::rememberOwnerless(&m_SubPool, curve.get());
        curve.release();
    }
    for (geom::OwnedSurface & surface : m_OwnerlessSurfaces) {
        geom::rememberOwnerless(&m_SubPool, surface.get());
        surface.release();
    }
    for (ReportEntry const & entry : m_ReportEntries)
        HtmlLoggerEntry::create(entry.text.c_str(), entry.entityType, entry.entryType);
    for (std::string & text : m_TextList)
        m_SubPool.m_TextList.push_back(std::move(text));
    m_SubPool.m_FacesToSplit.insert(m_SubPool.m_FacesToSplit.end(), m_FacesToSplit.begin(),
                                    m_FacesToSplit.end());
    for (LogEntry const & entry : m_LogEntries)
        m_SubPool._logger()->addEntry(entry.text.c_str(), entry.type, entry.subType, entry.show);
}

void ReadSession::rollBack() noexcept
{
    for (; !m_Attributes.empty(); m_Attributes.pop_back())
        Attribute::destruct(m_Attributes.back());
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
