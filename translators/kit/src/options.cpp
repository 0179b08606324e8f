#include <keld-transl/process/exec_io.h>
#include <keld-translator-kit/options.h>

namespace translator_kit {

namespace {

enum ValueType : int { TextValue = 1, IntValue = 2, BoolValue = 3, DoubleValue = 5 };

template <class T> T valueOf(transl_tk::IValue & value)
{
    T result{};
    value.getValue(result);
    return result;
}

bool isOf(transl_tk::IValue const * value, ValueType type)
{
    return value && value->getType() == type;
}

} // namespace

std::optional<std::string> Options::text(std::string const & name) const
{
    transl_tk::IValue * const value = find(name);
    if (!isOf(value, TextValue))
        return std::nullopt;
    return valueOf<char *>(*value);
}

std::optional<int> Options::integer(std::string const & name) const
{
    transl_tk::IValue * const value = find(name);
    if (!isOf(value, IntValue))
        return std::nullopt;
    return valueOf<int>(*value);
}

std::optional<bool> Options::flag(std::string const & name) const
{
    transl_tk::IValue * const value = find(name);
    if (!isOf(value, BoolValue))
        return std::nullopt;
    return valueOf<bool>(*value);
}

std::optional<double> Options::number(std::string const & name) const
{
    transl_tk::IValue * const value = find(name);
    if (isOf(value, IntValue))
        return valueOf<int>(*value);
    if (isOf(value, DoubleValue))
        return valueOf<double>(*value);
    return std::nullopt;
}

transl_tk::IValue * Options::find(std::string const & name) const
{
    for (int index = 0; index < m_Options.size(); ++index) {
        transl_tk::IOption const * const option = m_Options.getOption(index);
        if (option->getName() == name)
            return option->getNumValues() > 0 ? option->getValue(0) : nullptr;
    }
    return nullptr;
}

} // namespace translator_kit
