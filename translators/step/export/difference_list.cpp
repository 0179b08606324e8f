#include "export/difference_list.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace step {

namespace {

constexpr double Share = 1e-6;
constexpr std::size_t MostNames = 5;

std::string wordsOf(double number)
{
    char digits[32];
    constexpr int Digits = 12;
    char * const end =
        std::to_chars(digits, digits + sizeof(digits), number, std::chars_format::general, Digits)
            .ptr;
    return {digits, end};
}

} // namespace

void DifferenceList::compare(std::string const & what, long long expected, long long found)
{
    if (expected != found)
        add(what, std::to_string(expected), std::to_string(found));
}

void DifferenceList::compare(std::string const & what, double expected, double found, double size)
{
    // A number that is none is no match.
    if (!(std::abs(expected - found) <= Share * size))
        add(what, wordsOf(expected), wordsOf(found));
}

void DifferenceList::compare(std::string const & of, Bnd_Box const & expected,
                             Bnd_Box const & found)
{
    if (expected.IsVoid() || found.IsVoid()) {
        compare("number of bounding boxes" + of, expected.IsVoid() ? 0LL : 1LL,
                found.IsVoid() ? 0LL : 1LL);
        return;
    }
    double const size = std::sqrt(expected.SquareExtent());
    gp_Pnt const low = expected.CornerMin();
    gp_Pnt const high = expected.CornerMax();
    constexpr char const * Axes[] = {" x", " y", " z"};
    for (int i = 1; i <= 3; ++i) {
        std::string const axis = Axes[i - 1] + of;
        compare("least" + axis, low.Coord(i), found.CornerMin().Coord(i), size);
        compare("greatest" + axis, high.Coord(i), found.CornerMax().Coord(i), size);
    }
}

void DifferenceList::expectNames(std::string const & what,
                                 std::vector<std::string> const & expected,
                                 std::vector<std::string> const & found)
{
    std::vector<std::string> missing;
    std::set_difference(expected.begin(), expected.end(), found.begin(), found.end(),
                        std::back_inserter(missing));
    std::string list;
    for (std::size_t i = 0; i < std::min(missing.size(), MostNames); ++i)
        list += (i == 0 ? "\"" : ", \"") + missing[i] + "\"";
    if (!missing.empty())
        m_Sentences.push_back("The file lacks " + std::to_string(missing.size()) + " of the " +
                              what + ": " + list + ".");
}

void DifferenceList::compareNames(std::string const & what,
                                  std::vector<std::string> const & expected,
                                  std::vector<std::string> const & found)
{
    expectNames(what, expected, found);
    compare("number of " + what, static_cast<long long>(expected.size()),
            static_cast<long long>(found.size()));
}

void DifferenceList::add(std::string const & what, std::string const & expected,
                         std::string const & found)
{
    m_Sentences.push_back("The " + what + " is " + expected + " in the model and " + found +
                          " in the file.");
}

} // namespace step
