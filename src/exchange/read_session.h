#ifndef KELD_TRANSL_EXCHANGE_READ_SESSION_H
#define KELD_TRANSL_EXCHANGE_READ_SESSION_H

#include "geom/owned.h"

#include <keld-transl/model/base.h>
#include <keld-transl/model/sub_pool.h>
#include <keld-transl/reporting/logger_policy.h>

#include <string>
#include <utility>
#include <vector>

namespace transl_tk {

/// One reading of a model stream: what it has made so far, so that all of it can go again.
///
/// Entities are made at once, since later records refer to them; lines of text and of the log wait
/// until the whole stream has been read.
class ReadSession
{
public:
    struct LogEntry
    {
        std::string text;
        cad::ILoggerPolicy::Type type;
        cad::ILoggerPolicy::SubType subType;
        bool show;
    };

    explicit ReadSession(SubPool & subPool) : m_SubPool(subPool) {}

    SubPool & subPool() { return m_SubPool; }

    /// Remembers an entity that the reading made; null is what `create` gives for an id that is
    /// taken, and nothing to remember. `destruct` frees an entity of its kind.
    void made(EntityStore SubPool::*store, void (*destruct)(Base *), Base const * entity)
    {
        if (entity == nullptr)
            return;
        int const id = entity->getId();
        if (!m_Made.empty() && m_Made.back().store == store && m_Made.back().last + 1LL == id)
            m_Made.back().last = id;
        else
            m_Made.push_back({store, destruct, id, id});
    }

    /// Takes a shape that nobody will own: the sub-pool frees it at its end unless somebody else
    /// does. Null is passed over.
    void ownerless(geom::OwnedCurve curve);
    void ownerless(geom::OwnedSurface surface);

    /// Adds the texts to the model, for which nothing can fail any more but memory.
    void commit();

    /// Destroys what the reading made, the last first.
    void rollBack() noexcept;

    std::vector<std::string> m_TextList;
    std::vector<int> m_FacesToSplit;
    std::vector<LogEntry> m_LogEntries;

private:
    /// Entities of one store whose ids are a run without gaps.
    struct Run
    {
        EntityStore SubPool::*store;
        void (*destruct)(Base *);
        int first;
        int last;
    };

    SubPool & m_SubPool;
    std::vector<Run> m_Made;
    std::vector<geom::OwnedCurve> m_OwnerlessCurves;
    std::vector<geom::OwnedSurface> m_OwnerlessSurfaces;
};

} // namespace transl_tk

#endif
