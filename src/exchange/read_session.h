#ifndef KELD_TRANSL_EXCHANGE_READ_SESSION_H
#define KELD_TRANSL_EXCHANGE_READ_SESSION_H

#include "exchange/id_set.h"
#include "geom/owned.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/model/base.h>
#include <keld-transl/model/sub_pool.h>
#include <keld-transl/reporting/html_logger_entry.h>
#include <keld-transl/reporting/logger_policy.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace transl_tk {

class Assembly;

/// One reading of a model stream: what it has made so far, so that all of it can go again.
///
/// Entities and attributes are made at once, since later records refer to them; report entries and
/// lines of text and of the log wait until the whole stream has been read.
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

    struct ReportEntry
    {
        std::string text;
        HtmlLoggerEntry::EntityType entityType;
        HtmlLoggerEntry::EntryType entryType;
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
        // Assemblies, parts and instances share a store, and are freed in ways of their own.
        if (!m_Made.empty() && m_Made.back().store == store && m_Made.back().destruct == destruct &&
            m_Made.back().last + 1LL == id)
            m_Made.back().last = id;
        else
            m_Made.push_back({store, destruct, id, id});
    }

    /// Notes that an entity of `store` gets an owner. Null when that is right; otherwise the reason
    /// why not: it has one already, or it is not of this reading, so that the model that was there
    /// before owns it. All entities of its kind have been made.
    char const * own(EntityKind kind, EntityStore SubPool::*store, int id)
    {
        Ownership & entities = m_Ownership[static_cast<std::size_t>(kind)];
        if (!entities.prepared)
            prepare(entities, store);
        if (!entities.allMade && !isMade(entities, id))
            return "is not of this stream";
        return entities.owned.insert(id) ? nullptr : "has an owner already";
    }

    /// Makes an attribute of the model, which goes again should the reading fail.
    Attribute & makeAttribute(std::string const & name, Attribute::Type type);

    /// Where to put the ids of an assembly's children. Those that stand in the model at the end of
    /// the reading become children then.
    std::vector<int> & childrenOf(Assembly & assembly)
    {
        return m_Links.emplace_back(Links{&assembly, {}}).children;
    }

    /// Takes a shape that nobody will own: the sub-pool frees it at its end unless somebody else
    /// does. Null is passed over.
    void ownerless(geom::OwnedCurve curve);
    void ownerless(geom::OwnedSurface surface);

    /// Links children to their assemblies and adds the texts to the model. Throws a `StreamError`,
    /// and has done nothing, when an assembly would be its own descendant; nothing else can fail
    /// any more but memory.
    void commit();

    /// Destroys what the reading made, the last first.
    void rollBack() noexcept;

    std::vector<ReportEntry> m_ReportEntries;
    std::vector<std::string> m_TextList;
    std::vector<int> m_FacesToSplit;
    std::vector<LogEntry> m_LogEntries;

private:
    struct Links
    {
        Assembly * assembly;
        std::vector<int> children;
    };

    /// Entities of one store whose ids are a run without gaps.
    struct Run
    {
        EntityStore SubPool::*store;
        void (*destruct)(Base *);
        int first;
        int last;
    };

    /// What is known of the entities of one kind when the first of them gets an owner.
    struct Ownership
    {
        bool prepared = false;
        bool allMade = false;  ///< this reading made every entity of the store
        std::vector<Run> made; ///< otherwise those that it made, in ascending order
        IdSet owned;
    };

    void refuseRings() const;
    void linkChildren();
    void prepare(Ownership & entities, EntityStore SubPool::*store) const;
    static bool isMade(Ownership const & entities, int id);

    SubPool & m_SubPool;
    std::vector<Run> m_Made;
    std::size_t m_AttributeCount = 0; ///< made by the reading: the last of the sub-pool's list
    std::vector<Links> m_Links;
    std::array<Ownership, EntityKindAnnotation + 1> m_Ownership;
    std::vector<geom::OwnedCurve> m_OwnerlessCurves;
    std::vector<geom::OwnedSurface> m_OwnerlessSurfaces;
};

} // namespace transl_tk

#endif
