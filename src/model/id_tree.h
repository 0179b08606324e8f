#ifndef KELD_TRANSL_MODEL_ID_TREE_H
#define KELD_TRANSL_MODEL_ID_TREE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace transl_tk {

/// Ordered map from signed 32-bit id to a pointer that is never null.
///
/// A radix tree over the id's four bytes, most significant first, with the sign bit turned so that
/// the order of bytes is the order of numbers. A node holds its children in a sorted list while
/// they are few and in an array of 256 when they are many, and a run of single children is skipped,
/// so that dense ids cost about 8 bytes each and sparse ones a small node.
class IdTree
{
public:
    IdTree() noexcept = default;
    IdTree(IdTree const & other);
    IdTree(IdTree && other) noexcept { swap(other); }
    IdTree & operator=(IdTree other) noexcept
    {
        swap(other);
        return *this;
    }
    ~IdTree();

    void swap(IdTree & other) noexcept;

    void * find(int id) const noexcept;

    /// Enters `value`, which is not null. Returns where it stands, for replacing it before anything
    /// else changes the tree; null, and no change, when the id is taken.
    void ** insert(int id, void * value);

    /// Removes the entry and returns its value, null when there was none.
    void * erase(int id) noexcept { return remove(id, true); }

    /// The same, for one of many that go in a row: nodes keep their size until they are empty.
    void * eraseNext(int id) noexcept { return remove(id, false); }

    std::size_t size() const noexcept { return m_Size; }

    /// The largest id; there must be an entry.
    int largest() const noexcept { return m_Largest; }

    /// The entry of the smallest id that is not below `id`, or of the largest that is not above it.
    /// The value is null when there is none.
    std::pair<int, void *> atOrAfter(int id) const noexcept;
    std::pair<int, void *> atOrBefore(int id) const noexcept;

    /// Copies the entries from `id` on, in ascending order, until `room` of them are there. Returns
    /// how many there are; fewer than `room` means that there are no more.
    struct Entry
    {
        int id;
        void * value;
    };
    std::size_t copyFrom(int id, Entry * entries, std::size_t room) const noexcept;

    /// Calls `visit(context, id, value)` in ascending order of ids.
    void walk(void (*visit)(void * context, int id, void * value), void * context) const;

    /// Bytes in the tree's nodes.
    std::size_t memory() const noexcept { return m_Memory; }

private:
    struct Node;
    using Key = std::uint32_t;

    /// A full bottom node that was used a short while ago, with the bytes above it of the keys that
    /// it holds. Neighbouring ids come one after the other, often from a few places in turn.
    struct Recent
    {
        Key page = 0;
        Node * leaf = nullptr;
    };

    static Key pageOf(Key key) { return key >> 8; }
    Recent & recentOf(Key page) const { return m_Recent[page % m_Recent.size()]; }
    Node * recentLeaf(Key page) const
    {
        Recent const & recent = recentOf(page);
        return recent.page == page ? recent.leaf : nullptr;
    }
    void noteRecent(Node * leaf) const;

    static Node * makeNode(unsigned form, unsigned level, Key key);
    static void freeNode(Node * node) noexcept;
    static Node * clone(Node const * node);
    static void freeTree(Node * node) noexcept;

    Node * newNode(unsigned form, unsigned level, Key key);
    void dropNode(Node * node) noexcept;
    Node * newLeaf(Key key, void * value);
    static void ** onlySlot(Node * leaf, Key key);
    void ** insertBelow(Node ** place, Key key, void * value);
    void ** fork(Node ** place, Key key, void * value);
    void ** addChild(Node ** place, unsigned byte, void * child);
    void resize(Node ** place, unsigned form);
    void shrink(Node ** place) noexcept;
    void * remove(int id, bool shrinks) noexcept;

    Node * m_Root = nullptr;
    mutable std::array<Recent, 8> m_Recent;
    std::size_t m_Size = 0;
    std::size_t m_Memory = 0;
    int m_Largest = 0;
};

} // namespace transl_tk

#endif
