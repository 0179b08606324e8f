#ifndef KELD_TESTS_SUPPORT_SLOTS_H
#define KELD_TESTS_SUPPORT_SLOTS_H

#include <cstddef>
#include <cstring>

namespace tests {

/// Place of a virtual operation in its class's table, counted from 0.
///
/// A pointer to a virtual member function holds one more than the operation's byte offset in the
/// table (Itanium C++ ABI, 2.3). A virtual destructor takes two places and cannot be asked for: the
/// operations around it tell where it stands.
template <class Member> std::size_t slotOf(Member member)
{
    std::size_t bits = 0;
    static_assert(sizeof(member) >= sizeof(bits));
    std::memcpy(&bits, &member, sizeof(bits));
    return (bits - 1) / sizeof(void *);
}

} // namespace tests

#endif
