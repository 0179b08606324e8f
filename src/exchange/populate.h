#ifndef KELD_TRANSL_EXCHANGE_POPULATE_H
#define KELD_TRANSL_EXCHANGE_POPULATE_H

#include <cstddef>

namespace transl_tk {

/// What the stores or loads that follow are going to meet.
enum class Access { Write, Read };

/// Maps the next bytes of a segment at `at`, at least `size` of them, and a good piece more up to
/// `left`, in one go: much cheaper than page by page as the accesses come to them. Returns how many
/// bytes that are; the kernel may still have left pages to the accesses.
std::size_t populate(char const * at, std::size_t size, std::size_t left, Access access);

/// Lets the system supply the memory at `at`, which is about to be filled for the first time, in
/// large pages where it can. Does nothing for little memory.
void expectFilling(void * at, std::size_t size);

} // namespace transl_tk

#endif
