#ifndef KELD_TESTS_UNIT_TOPOLOGY_SHARING_LEDGER_H
#define KELD_TESTS_UNIT_TOPOLOGY_SHARING_LEDGER_H

#include <keld-transl/model/base.h>

#include <array>
#include <map>
#include <set>
#include <vector>

namespace tests {

/// The entities of a model as a plain count of references has them: who lives, who uses whom and
/// who owns whom. It knows every entity by a number of its own, which no other one ever gets; 0 is
/// none.
class SharingLedger
{
public:
    enum Kind { Curve, Surface, Vertex, Edge, UVCurve, Fin, Loop, Face, Shell, Strip, Body, Kinds };

    struct Entry
    {
        Kind kind{};
        int id = 0;
        transl_tk::Base * entity = nullptr;
        bool lives = true;
        bool isOwned = false;
        std::vector<int> uses;     ///< edge: curve, start, end; fin: edge; face: surface
        std::vector<int> children; ///< 0 for a null in the list
        std::set<int> users;
    };

    /// The id that a new entity gets for the one that is asked for, with false when it is taken.
    std::pair<int, bool> idFor(Kind kind, int asked) const
    {
        std::map<int, transl_tk::Base *> const & living = m_Living[kind];
        if (asked == 0)
            return {living.empty() ? 1 : living.rbegin()->first + 1, true};
        return {asked, living.count(asked) == 0};
    }

    int create(Kind kind, int id, transl_tk::Base * entity, std::vector<int> uses = {})
    {
        int const made = ++m_Last;
        Entry & entry = m_Entries[made];
        entry.kind = kind;
        entry.id = id;
        entry.entity = entity;
        m_Living[kind][id] = entity;
        for (std::size_t place = 0; place < uses.size(); ++place)
            use(made, uses[place]);
        entry.uses = std::move(uses);
        return made;
    }

    /// `user` turns from what stands at this place of its uses to another one.
    void setUse(int user, std::size_t place, int used)
    {
        leave(user, m_Entries[user].uses[place]);
        use(user, used);
        m_Entries[user].uses[place] = used;
    }

    void adopt(int parent, int child)
    {
        m_Entries[parent].children.push_back(child);
        if (child != 0)
            m_Entries[child].isOwned = true;
    }

    /// The fin's only child is its trace; one that it had before is nobody's.
    void setTrace(int fin, int trace)
    {
        for (int const old : m_Entries[fin].children)
            m_Entries[old].isOwned = false;
        m_Entries[fin].children.clear();
        if (trace != 0)
            adopt(fin, trace);
    }

    void destroy(int number)
    {
        Entry & entry = m_Entries[number];
        entry.lives = false;
        m_Living[entry.kind].erase(entry.id);
        for (int const used : entry.uses)
            if (leave(number, used))
                destroy(used);
        for (int const child : entry.children)
            if (child != 0)
                destroy(child);
    }

    void clear()
    {
        for (auto & [number, entry] : m_Entries)
            entry.lives = false;
        for (auto & living : m_Living)
            living.clear();
    }

    Entry const & operator[](int number) const { return m_Entries.at(number); }

    /// The numbers of what lives, of one kind; without what somebody owns, when asked.
    std::vector<int> living(Kind kind, bool alsoOwned = true) const
    {
        std::vector<int> numbers;
        for (auto const & [number, entry] : m_Entries)
            if (entry.lives && entry.kind == kind && (alsoOwned || !entry.isOwned))
                numbers.push_back(number);
        return numbers;
    }

    std::map<int, transl_tk::Base *> const & store(Kind kind) const { return m_Living[kind]; }

    /// Ids of a kind under which there ever was a user.
    std::size_t usedIds(Kind kind) const { return m_UsedIds[kind].size(); }

private:
    void use(int user, int used)
    {
        if (used == 0)
            return;
        m_Entries[used].users.insert(user);
        m_UsedIds[m_Entries[used].kind].insert(m_Entries[used].id);
    }

    /// True when `used` lives and has lost its last user, or had none.
    bool leave(int user, int used)
    {
        if (used == 0 || !m_Entries[used].lives)
            return false;
        m_Entries[used].users.erase(user);
        return m_Entries[used].users.empty();
    }

    int m_Last = 0;
    std::map<int, Entry> m_Entries;
    std::array<std::map<int, transl_tk::Base *>, Kinds> m_Living;
    std::array<std::set<int>, Kinds> m_UsedIds;
};

} // namespace tests

#endif
