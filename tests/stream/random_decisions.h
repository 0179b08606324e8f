#ifndef KELD_TESTS_STREAM_RANDOM_DECISIONS_H
#define KELD_TESTS_STREAM_RANDOM_DECISIONS_H

#include <cstdint>
#include <rapidcheck.h>
#include <vector>

namespace tests {

/// Lists of up to `perSize` numbers for each step of rapidcheck's size. The numbers themselves are
/// made at one size, since beyond it nearly all of their bits are set.
inline rc::Gen<std::vector<std::uint64_t>> manyDecisions(double perSize)
{
    auto const number = rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::uint64_t>());
    return rc::gen::scale(perSize, rc::gen::container<std::vector<std::uint64_t>>(number));
}

} // namespace tests

#endif
