#ifndef KELD_TRANSL_PRODUCT_HIERARCHY_LIST_H
#define KELD_TRANSL_PRODUCT_HIERARCHY_LIST_H

#include "product/hierarchy_ref.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace transl_tk {

/// Nodes that another node lists, each once and with a number.
///
/// They stand in a row in the order of their arrival, which leaves gaps where some have gone; a
/// long row gets a hash index of positions once a node is looked for. Finding, adding and removing
/// take constant time, also when a million goes one by one.
class HierarchyList
{
public:
    struct Entry : HierarchyRef
    {
        Entry(Hierarchy * node, int itsNumber) : HierarchyRef(node), number(itsNumber) {}

        int number;
    };

    HierarchyList() = default;
    HierarchyList(HierarchyList const &) = delete;
    HierarchyList & operator=(HierarchyList const &) = delete;

    /// How many there are.
    int size() const noexcept { return m_Size; }

    /// The entry of a node, valid until the next change; null when it is not listed, or is null.
    Entry * find(Hierarchy const * node) noexcept;
    bool contains(Hierarchy const * node) const noexcept { return positionOf(node) != NoPosition; }

    /// Adds a node that is not listed yet; one that is keeps its number.
    void insert(Hierarchy * node, int number);

    /// Adds a node that is known not to be listed.
    void append(Hierarchy * node, int number);

    /// Removes a node; one that is not listed is no fault.
    void erase(Hierarchy const * node) noexcept;

    /// The entries in the order of their arrival.
    std::vector<Entry> entries() const;

    /// The nodes in ascending order of their numbers; of equal numbers the first that arrived.
    std::vector<HierarchyRef> byNumber() const;

    /// Calls `visit(node)` for each of them, none of which may come or go meanwhile.
    template <class Visit> void visitByNumber(Visit visit) const
    {
        if (m_Ascending) {
            for (Entry const & each : m_Entries)
                if (each.hierarchy != nullptr)
                    visit(static_cast<HierarchyRef const &>(each));
        } else {
            for (HierarchyRef const & each : byNumber())
                visit(each);
        }
    }

private:
    static constexpr std::size_t LongestWithoutIndex = 32;

    static constexpr std::size_t NoPosition = SIZE_MAX;

    std::size_t positionOf(Hierarchy const * node) const noexcept;
    std::size_t slotOf(Hierarchy const * node) const noexcept;
    void startIndex() const noexcept;
    void enterInIndex(std::size_t position) const noexcept;
    void closeGaps() noexcept;
    void makeRoomInIndex();

    std::vector<Entry> m_Entries; ///< null pointers are the gaps; none at the end
    mutable std::unique_ptr<std::uint32_t[]> m_Index; ///< positions plus 1, 0 where a slot is free
    mutable std::uint32_t m_Slots = 0;                ///< a power of 2
    mutable std::uint32_t m_Taken = 0; ///< slots in use, also of nodes that have gone
    int m_Size = 0;
    bool m_Ascending = true; ///< whether the order of arrival is the order of numbers
};

static_assert(sizeof(HierarchyList::Entry) == 16);

} // namespace transl_tk

#endif
