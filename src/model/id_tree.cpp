#include "model/id_tree.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

namespace transl_tk {

namespace {

constexpr unsigned BottomLevel = 3;
constexpr unsigned FullForm = 4;
constexpr std::array<unsigned, 5> Capacity = {1, 4, 16, 48, 256};
/// A node takes the next smaller form when no more children than this are left; the gap to that
/// form's capacity keeps a node that grows and shrinks by one from changing form each time.
constexpr std::array<unsigned, 5> ShrinkAt = {0, 1, 3, 12, 32};

using Key = std::uint32_t;

Key keyOf(int id)
{
    return static_cast<Key>(id) ^ 0x80000000U;
}

int idOf(Key key)
{
    return static_cast<int>(key ^ 0x80000000U);
}

unsigned shiftOf(unsigned level)
{
    return 24 - 8 * level;
}

unsigned byteOf(Key key, unsigned level)
{
    return (key >> shiftOf(level)) & 0xFFU;
}

/// The bytes of `key` above `level`.
Key prefixOf(Key key, unsigned level)
{
    return level == 0 ? 0 : key & (~Key{0} << (shiftOf(level) + 8));
}

} // namespace

/// A header, the children, and, in all forms but the full one, their bytes in ascending order.
/// Children are nodes, or values in a node of the bottom level.
struct IdTree::Node
{
    Key prefix;
    std::uint8_t level;
    std::uint8_t form;
    std::uint16_t count;

    static std::size_t bytes(unsigned form)
    {
        unsigned const capacity = Capacity[form];
        return sizeof(Node) + capacity * sizeof(void *) + (form == FullForm ? 0 : capacity);
    }

    void ** children() { return reinterpret_cast<void **>(this + 1); }
    void * const * children() const { return reinterpret_cast<void * const *>(this + 1); }

    std::uint8_t * keys() { return reinterpret_cast<std::uint8_t *>(children() + Capacity[form]); }
    std::uint8_t const * keys() const
    {
        return reinterpret_cast<std::uint8_t const *>(children() + Capacity[form]);
    }

    bool covers(Key key) const { return prefixOf(key, level) == prefix; }

    /// Index of the first child whose byte is not below `byte`; `count` when there is none.
    unsigned position(unsigned byte) const
    {
        std::uint8_t const * const first = keys();
        return static_cast<unsigned>(std::lower_bound(first, first + count, byte) - first);
    }

    /// Where the child for `byte` stands, null when there is none.
    void ** child(unsigned byte)
    {
        if (form == FullForm) {
            void ** const slot = children() + byte;
            return *slot != nullptr ? slot : nullptr;
        }
        unsigned const i = position(byte);
        return i < count && keys()[i] == byte ? children() + i : nullptr;
    }

    /// Adds a child, for which there must be room. Null when the byte has one in a full node; in
    /// the other forms it must have none.
    void ** add(unsigned byte, void * value)
    {
        unsigned i = byte;
        if (form == FullForm) {
            if (children()[byte] != nullptr)
                return nullptr;
        } else {
            i = position(byte);
            std::memmove(children() + i + 1, children() + i, (count - i) * sizeof(void *));
            std::memmove(keys() + i + 1, keys() + i, count - i);
            keys()[i] = static_cast<std::uint8_t>(byte);
        }
        children()[i] = value;
        ++count;
        return children() + i;
    }

    void remove(unsigned byte)
    {
        if (form == FullForm) {
            children()[byte] = nullptr;
        } else {
            unsigned const i = position(byte);
            std::memmove(children() + i, children() + i + 1, (count - i - 1) * sizeof(void *));
            std::memmove(keys() + i, keys() + i + 1, count - i - 1);
        }
        --count;
    }

    template <class Visit> void forEach(Visit && visit) const
    {
        if (form == FullForm) {
            for (unsigned byte = 0; byte < 256; ++byte)
                if (void * const value = children()[byte])
                    visit(byte, value);
        } else {
            for (unsigned i = 0; i < count; ++i)
                visit(keys()[i], children()[i]);
        }
    }

    /// The nearest child from `byte` on, upwards or downwards, with its byte; null when there is
    /// none.
    template <bool Up> void * nearest(unsigned & byte) const
    {
        if (form == FullForm) {
            for (;;) {
                if (void * const value = children()[byte])
                    return value;
                if (byte == (Up ? 255U : 0U))
                    return nullptr;
                byte = Up ? byte + 1 : byte - 1;
            }
        }
        unsigned i = position(byte);
        if (!Up && (i == count || keys()[i] != byte)) {
            if (i == 0)
                return nullptr;
            --i;
        }
        if (i == count)
            return nullptr;
        byte = keys()[i];
        return children()[i];
    }

    /// The first entry below this node that is at `key` or beyond it in the direction of `Up`.
    template <bool Up> std::pair<Key, void *> seek(Key key) const
    {
        if (!covers(key)) {
            if (Up ? prefix < key : prefix > key)
                return {0, nullptr};
            key = Up ? prefix : prefix | ~prefixOf(~Key{0}, level);
        }
        for (unsigned byte = byteOf(key, level);;) {
            void * const value = nearest<Up>(byte);
            if (value == nullptr)
                return {0, nullptr};
            if (level == BottomLevel)
                return {prefix | byte, value};
            auto const found = static_cast<Node const *>(value)->template seek<Up>(key);
            if (found.second != nullptr || byte == (Up ? 255U : 0U))
                return found;
            byte = Up ? byte + 1 : byte - 1;
        }
    }

    /// Copies the entries at and behind `key` to `at`, as long as that is before `end`.
    void copyFrom(Key key, Entry *& at, Entry * end) const
    {
        bool const holdsKey = covers(key);
        if (!holdsKey && prefix < key)
            return;
        unsigned const first = holdsKey ? byteOf(key, level) : 0;
        bool const isFull = form == FullForm;
        unsigned const slots = isFull ? 256U : count;
        for (unsigned i = isFull ? first : position(first); i < slots && at != end; ++i) {
            // Sparse ids lie far apart in memory: the nodes to come are fetched meanwhile.
            if (i + Ahead < slots)
                __builtin_prefetch(children()[i + Ahead]);
            void * const child = children()[i];
            if (child == nullptr)
                continue;
            if (level == BottomLevel)
                *at++ = {idOf(prefix | (isFull ? i : keys()[i])), child};
            else
                static_cast<Node const *>(child)->copyFrom(key, at, end);
        }
    }

    static constexpr unsigned Ahead = 8;
};

IdTree::Node * IdTree::makeNode(unsigned form, unsigned level, Key key)
{
    auto * const node = static_cast<Node *>(::operator new(Node::bytes(form)));
    node->prefix = prefixOf(key, level);
    node->level = static_cast<std::uint8_t>(level);
    node->form = static_cast<std::uint8_t>(form);
    node->count = 0;
    if (form == FullForm)
        std::fill_n(node->children(), 256, nullptr);
    return node;
}

void IdTree::freeNode(Node * node) noexcept
{
    ::operator delete(node);
}

IdTree::Node * IdTree::clone(Node const * node)
{
    Node * const copy = makeNode(node->form, node->level, node->prefix);
    try {
        node->forEach([&](unsigned byte, void * child) {
            copy->add(byte,
                      node->level == BottomLevel ? child : clone(static_cast<Node const *>(child)));
        });
    } catch (...) {
        freeTree(copy);
        throw;
    }
    return copy;
}

void IdTree::freeTree(Node * node) noexcept
{
    if (node->level != BottomLevel)
        node->forEach([](unsigned, void * child) { freeTree(static_cast<Node *>(child)); });
    freeNode(node);
}

IdTree::IdTree(IdTree const & other)
    : m_Root(other.m_Root != nullptr ? clone(other.m_Root) : nullptr), m_Size(other.m_Size),
      m_Memory(other.m_Memory), m_Largest(other.m_Largest)
{}

IdTree::~IdTree()
{
    if (m_Root != nullptr)
        freeTree(m_Root);
}

void IdTree::swap(IdTree & other) noexcept
{
    std::swap(m_Root, other.m_Root);
    std::swap(m_Recent, other.m_Recent);
    std::swap(m_Size, other.m_Size);
    std::swap(m_Memory, other.m_Memory);
    std::swap(m_Largest, other.m_Largest);
}

IdTree::Node * IdTree::newNode(unsigned form, unsigned level, Key key)
{
    Node * const node = makeNode(form, level, key);
    m_Memory += Node::bytes(form);
    return node;
}

void IdTree::noteRecent(Node * leaf) const
{
    Key const page = pageOf(leaf->prefix);
    recentOf(page) = {page, leaf};
}

void IdTree::dropNode(Node * node) noexcept
{
    m_Memory -= Node::bytes(node->form);
    if (Recent & recent = recentOf(pageOf(node->prefix)); recent.leaf == node)
        recent.leaf = nullptr;
    freeNode(node);
}

IdTree::Node * IdTree::newLeaf(Key key, void * value)
{
    // Where ids come one after the other, the next node fills up like the one before it.
    Node const * const before = recentLeaf(pageOf(key) - 1);
    bool const isNextOfFull = before != nullptr && before->count == 256;
    Node * const leaf = newNode(isNextOfFull ? FullForm : 0, BottomLevel, key);
    leaf->add(byteOf(key, BottomLevel), value);
    if (isNextOfFull)
        noteRecent(leaf);
    return leaf;
}

/// Where the value of a leaf with one entry stands.
void ** IdTree::onlySlot(Node * leaf, Key key)
{
    return leaf->child(byteOf(key, BottomLevel));
}

void IdTree::resize(Node ** place, unsigned form)
{
    Node * const old = *place;
    Node * const node = newNode(form, old->level, old->prefix);
    old->forEach([&](unsigned byte, void * child) { node->add(byte, child); });
    *place = node;
    dropNode(old);
}

void ** IdTree::addChild(Node ** place, unsigned byte, void * child)
{
    if ((*place)->count == Capacity[(*place)->form])
        resize(place, (*place)->form + 1U);
    return (*place)->add(byte, child);
}

/// Gives a node that has become nearly empty a smaller form, where memory allows it.
void IdTree::shrink(Node ** place) noexcept
{
    Node * const node = *place;
    if (node->count > ShrinkAt[node->form])
        return;
    try {
        resize(place, node->form - 1U);
    } catch (std::bad_alloc const &) {
        // The larger form serves as well.
        return;
    }
}

void * IdTree::find(int id) const noexcept
{
    Key const key = keyOf(id);
    if (Node const * const recent = recentLeaf(pageOf(key)))
        return recent->children()[byteOf(key, BottomLevel)];
    Node * node = m_Root;
    while (node != nullptr && node->covers(key)) {
        void ** const slot = node->child(byteOf(key, node->level));
        if (slot == nullptr)
            return nullptr;
        if (node->level == BottomLevel) {
            if (node->form == FullForm)
                noteRecent(node);
            return *slot;
        }
        node = static_cast<Node *>(*slot);
    }
    return nullptr;
}

void ** IdTree::insert(int id, void * value)
{
    Key const key = keyOf(id);
    Node * const recent = recentLeaf(pageOf(key));
    void ** const slot = recent != nullptr ? recent->add(byteOf(key, BottomLevel), value)
                                           : insertBelow(&m_Root, key, value);
    if (slot != nullptr) {
        if (m_Size == 0 || id > m_Largest)
            m_Largest = id;
        ++m_Size;
    }
    return slot;
}

void ** IdTree::insertBelow(Node ** place, Key key, void * value)
{
    for (;;) {
        Node * const node = *place;
        if (node == nullptr) {
            *place = newLeaf(key, value);
            return onlySlot(*place, key);
        }
        if (!node->covers(key))
            return fork(place, key, value);
        unsigned const byte = byteOf(key, node->level);
        void ** const slot = node->child(byte);
        if (node->level == BottomLevel) {
            if (slot != nullptr)
                return nullptr;
            void ** const added = addChild(place, byte, value);
            if ((*place)->form == FullForm)
                noteRecent(*place);
            return added;
        }
        if (slot == nullptr) {
            Node * const leaf = newLeaf(key, value);
            try {
                addChild(place, byte, leaf);
            } catch (...) {
                dropNode(leaf);
                throw;
            }
            return onlySlot(leaf, key);
        }
        place = reinterpret_cast<Node **>(slot);
    }
}

/// Puts a node where `key` and the node at `place` part ways, at a level that the path to that node
/// skipped.
void ** IdTree::fork(Node ** place, Key key, void * value)
{
    Node * const node = *place;
    unsigned level = 0;
    while (byteOf(key, level) == byteOf(node->prefix, level))
        ++level;
    Node * const leaf = newLeaf(key, value);
    try {
        *place = newNode(1, level, key);
    } catch (...) {
        dropNode(leaf);
        throw;
    }
    (*place)->add(byteOf(key, level), leaf);
    (*place)->add(byteOf(node->prefix, level), node);
    return onlySlot(leaf, key);
}

void * IdTree::remove(int id, bool shrinks) noexcept
{
    Key const key = keyOf(id);
    unsigned const last = byteOf(key, BottomLevel);
    void * value = nullptr;
    unsigned const leastAfter = shrinks ? ShrinkAt[FullForm] + 1 : 1;
    Node * const recent = recentLeaf(pageOf(key));
    if (recent != nullptr && recent->count > leastAfter) {
        value = recent->children()[last];
        if (value == nullptr)
            return nullptr;
        recent->remove(last);
    } else {
        Node ** parent = nullptr;
        Node ** place = &m_Root;
        for (;;) {
            Node * const node = *place;
            if (node == nullptr || !node->covers(key))
                return nullptr;
            void ** const slot = node->child(byteOf(key, node->level));
            if (slot == nullptr)
                return nullptr;
            if (node->level == BottomLevel) {
                value = *slot;
                break;
            }
            parent = place;
            place = reinterpret_cast<Node **>(slot);
        }
        Node * const leaf = *place;
        leaf->remove(last);
        if (leaf->count != 0) {
            if (shrinks)
                shrink(place);
            if ((*place)->form == FullForm)
                noteRecent(*place);
        } else {
            dropNode(leaf);
            if (parent == nullptr) {
                m_Root = nullptr;
            } else {
                Node * const node = *parent;
                node->remove(byteOf(key, node->level));
                if (node->count == 1) {
                    unsigned byte = 0;
                    *parent = static_cast<Node *>(node->nearest<true>(byte));
                    dropNode(node);
                } else {
                    shrink(parent);
                }
            }
        }
    }
    --m_Size;
    if (id == m_Largest && m_Size != 0)
        m_Largest = atOrBefore(id).first;
    return value;
}

std::pair<int, void *> IdTree::atOrAfter(int id) const noexcept
{
    if (m_Root == nullptr)
        return {0, nullptr};
    if (Node const * const recent = recentLeaf(pageOf(keyOf(id)))) {
        auto const near = recent->seek<true>(keyOf(id));
        if (near.second != nullptr)
            return {idOf(near.first), near.second};
    }
    auto const found = m_Root->seek<true>(keyOf(id));
    return {idOf(found.first), found.second};
}

std::pair<int, void *> IdTree::atOrBefore(int id) const noexcept
{
    if (m_Root == nullptr)
        return {0, nullptr};
    auto const found = m_Root->seek<false>(keyOf(id));
    return {idOf(found.first), found.second};
}

std::size_t IdTree::copyFrom(int id, Entry * entries, std::size_t room) const noexcept
{
    Entry * at = entries;
    if (m_Root != nullptr)
        m_Root->copyFrom(keyOf(id), at, entries + room);
    return static_cast<std::size_t>(at - entries);
}

void IdTree::walk(void (*visit)(void *, int, void *), void * context) const
{
    auto const below = [&](auto const & self, Node const * node) -> void {
        node->forEach([&](unsigned byte, void * child) {
            if (node->level == BottomLevel)
                visit(context, idOf(node->prefix | byte), child);
            else
                self(self, static_cast<Node const *>(child));
        });
    };
    if (m_Root != nullptr)
        below(below, m_Root);
}

} // namespace transl_tk
