#include "exchange/read_session.h"

#include "attributes/attribute_access.h"
#include "exchange/records/links.h"
#include "exchange/stream_error.h"
#include "geom/ownerless.h"

#include <keld-transl/product/assembly.h>

#include <algorithm>
#include <unordered_map>

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
    Attribute * const attribute = Attribute::create(name.c_str(), type);
    ++m_AttributeCount;
    return *attribute;
}

namespace {

/// Walks below each assembly by the ids of the children that the stream gives it.
class RingFinder
{
public:
    explicit RingFinder(std::unordered_map<int, std::vector<int> const *> childrenOf)
        : m_ChildrenOf(std::move(childrenOf))
    {}

    /// Throws a `StreamError` when `id` stands below itself, or has something below it that does.
    void walkBelow(int id)
    {
        enter(id);
        while (!m_Way.empty()) {
            auto & [assembly, children, next] = m_Way.back();
            if (next == children->size()) {
                m_Open[assembly] = false;
                m_Way.pop_back();
            } else {
                enter((*children)[next++]);
            }
        }
    }

private:
    struct Level
    {
        int assembly;
        std::vector<int> const * children;
        std::size_t next;
    };

    void enter(int id)
    {
        auto const found = m_ChildrenOf.find(id);
        if (found == m_ChildrenOf.end())
            return;
        auto const [open, isNew] = m_Open.try_emplace(id, true);
        if (isNew)
            m_Way.push_back({id, found->second, 0});
        else if (open->second)
            throw StreamError("The model stream is not sound: the assembly " + std::to_string(id) +
                              " is its own descendant.");
    }

    std::unordered_map<int, std::vector<int> const *> m_ChildrenOf;
    std::unordered_map<int, bool> m_Open; ///< false once everything below has been seen
    std::vector<Level> m_Way;
};

} // namespace

void ReadSession::refuseRings() const
{
    std::unordered_map<int, std::vector<int> const *> childrenOf;
    for (Links const & links : m_Links)
        childrenOf.emplace(links.assembly->getId(), &links.children);
    RingFinder finder(std::move(childrenOf));
    for (Links const & links : m_Links)
        finder.walkBelow(links.assembly->getId());
}

void ReadSession::linkChildren()
{
    refuseRings();
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
    for (; m_AttributeCount != 0; --m_AttributeCount) {
        Attribute * const attribute = m_SubPool.m_Attributes.back();
        m_SubPool.m_Attributes.pop_back();
        AttributeAccess::free(attribute);
    }
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
