#ifndef KELD_STEP_EXPORT_DIFFERENCE_LIST_H
#define KELD_STEP_EXPORT_DIFFERENCE_LIST_H

#include <Bnd_Box.hxx>
#include <string>
#include <vector>

namespace step {

/// Compares a model with a file, thing by thing, and keeps a sentence for each that differs.
class DifferenceList
{
public:
    void compare(std::string const & what, long long expected, long long found);

    /// Numbers may differ by a millionth of `size`.
    void compare(std::string const & what, double expected, double found, double size);

    /// Boxes may differ by a millionth of their diagonal. `of` names what they bound, such as
    /// " of \"plate\"".
    void compare(std::string const & of, Bnd_Box const & expected, Bnd_Box const & found);

    /// Looks for what `found` lacks. Both lists are sorted.
    void expectNames(std::string const & what, std::vector<std::string> const & expected,
                     std::vector<std::string> const & found);

    /// The same, and neither may have more than the other.
    void compareNames(std::string const & what, std::vector<std::string> const & expected,
                      std::vector<std::string> const & found);

    std::vector<std::string> take() { return std::move(m_Sentences); }

private:
    void add(std::string const & what, std::string const & expected, std::string const & found);

    std::vector<std::string> m_Sentences;
};

} // namespace step

#endif
