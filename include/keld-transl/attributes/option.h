#ifndef KELD_TRANSL_ATTRIBUTES_OPTION_H
#define KELD_TRANSL_ATTRIBUTES_OPTION_H

#include <keld-transl/attributes/value.h>

#include <vector>

namespace transl_tk {

/// A named option of a translator run: a list of values with a name and a description.
class KELD_TRANSL_EXPORT IOption
{
protected:
    IOption() = default;
    virtual ~IOption() = default;

public:
    IOption(IOption const &) = delete;
    IOption & operator=(IOption const &) = delete;

    /// Makes an option without values. Null when a text is null.
    static IOption * create(char const * name, char const * description);

    /// Makes an option with one first value, which it adopts. Null when an argument is null; then
    /// the value stays with the caller.
    static IOption * create(char const * name, IValue * value, char const * description);

    /// Frees an option with all its values; null is no fault.
    static void destruct(IOption * option);

    virtual char const * getName() const = 0;

    /// Appends `value` and adopts it. Throws the text "NULL value" as `char const *` for null.
    virtual void addValue(IValue * value) = 0;

    /// Gives the value at `index` the content of `source`, which stays with the caller. Both must
    /// be of one type, and the index must exist.
    virtual void setValue(int const & index, IValue * source) = 0;

    virtual int getNumValues() const = 0;

    /// The value at `index`, which must exist. It stays owned by the option.
    virtual IValue * getValue(int const & index) const = 0;

    /// A copy of the list; the values stay owned by the option.
    virtual std::vector<IValue *> getValues() const = 0;

    virtual char const * getDescription() const = 0;
};

} // namespace transl_tk

#endif
