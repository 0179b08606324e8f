#include <keld-common/text_tree.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace {

using Compare = int (*)(char const *, char const *);

/// The levels of a key one behind the other, each with its terminating zero. So `compare`, which
/// takes whole texts, can be given any of them.
using Levels = std::string_view;

/// Orders keys level by level, so that one sorted sequence of keys is the tree in the order of its
/// walk. However deep a key is, nothing recurses.
struct ByLevels
{
    Compare m_Compare;

    bool operator()(Levels a, Levels b) const
    {
        while (!a.empty() && !b.empty()) {
            int const order = m_Compare(a.data(), b.data());
            if (order != 0)
                return order < 0;
            a.remove_prefix(std::strlen(a.data()) + 1);
            b.remove_prefix(std::strlen(b.data()) + 1);
        }
        return a.empty() && !b.empty();
    }
};

/// Splits `key`, of `length` characters and a terminating zero, where it stands.
Levels splitInPlace(char * key, size_t length)
{
    std::replace(key, key + length, '/', '\0');
    return {key, length + 1};
}

char foldedCase(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

} // namespace

struct TreeS_P
{
    TreeS_P(Compare compare, char * (*duplicate)(char const *), void (*release)(void *))
        : m_Duplicate(duplicate), m_Release(release), m_Texts(ByLevels{compare})
    {}
    TreeS_P(TreeS_P const &) = delete;
    TreeS_P & operator=(TreeS_P const &) = delete;
    ~TreeS_P()
    {
        for (auto const & [levels, text] : m_Texts) {
            m_Release(text);
            m_Release(const_cast<char *>(levels.data()));
        }
    }

    char * (*m_Duplicate)(char const *);
    void (*m_Release)(void *);
    std::map<Levels, char *, ByLevels> m_Texts; // keys and texts are freed with m_Release
};

namespace {

using Place = std::map<Levels, char *, ByLevels>::iterator;

void insert(TreeS_P & tree, Place place, char const * key, char * text)
{
    char * const copy = tree.m_Duplicate(key);
    if (copy == nullptr)
        throw std::bad_alloc();
    try {
        tree.m_Texts.emplace_hint(place, splitInPlace(copy, std::strlen(copy)), text);
    } catch (...) {
        tree.m_Release(copy);
        throw;
    }
}

void set(TreeS_P & tree, char const * key, char * text)
{
    std::string copy = key;
    Levels const levels = splitInPlace(copy.data(), copy.size());
    Place const place = tree.m_Texts.lower_bound(levels);
    if (place == tree.m_Texts.end() || tree.m_Texts.key_comp()(levels, place->first))
        insert(tree, place, key, text);
    else if (char * const old = std::exchange(place->second, text); old != text)
        tree.m_Release(old);
}

} // namespace

TreeS_P * NewTreeS_P(int (*compare)(char const *, char const *), char * (*duplicate)(char const *),
                     void (*release)(void *))
{
    if (compare == nullptr || duplicate == nullptr || release == nullptr)
        return nullptr;
    try {
        return new TreeS_P(compare, duplicate, release);
    } catch (...) {
        return nullptr;
    }
}

int SetNodeDataS_P(TreeS_P * tree, char const * key, char * text, int)
{
    if (tree == nullptr || key == nullptr || text == nullptr)
        return 0;
    try {
        set(*tree, key, text);
        return 1;
    } catch (...) {
        return 0;
    }
}

char const * GetNodeDataS_P(TreeS_P const * tree, char const * key)
{
    if (tree == nullptr || key == nullptr)
        return nullptr;
    try {
        std::string copy = key;
        auto const found = tree->m_Texts.find(splitInPlace(copy.data(), copy.size()));
        return found == tree->m_Texts.end() ? nullptr : found->second;
    } catch (...) {
        return nullptr;
    }
}

int WalkTreeS_P(TreeS_P const * tree, int (*visit)(char const *, char const *, void *), void * user)
{
    if (tree == nullptr || visit == nullptr)
        return 0;
    try {
        std::string key;
        for (auto const & [levels, text] : tree->m_Texts) {
            key.assign(levels.data(), levels.size() - 1);
            std::replace(key.begin(), key.end(), '\0', '/');
            if (visit(key.c_str(), text, user) == 0)
                return 0;
        }
        return 1;
    } catch (...) {
        return 0;
    }
}

void FreeTreeS_P(TreeS_P * tree)
{
    delete tree;
}

int str_case_cmp(char const * a, char const * b)
{
    if (a == nullptr || b == nullptr)
        return (a != nullptr) - (b != nullptr);
    for (; *a != '\0' && foldedCase(*a) == foldedCase(*b); ++a, ++b) {
    }
    return static_cast<unsigned char>(foldedCase(*a)) - static_cast<unsigned char>(foldedCase(*b));
}
