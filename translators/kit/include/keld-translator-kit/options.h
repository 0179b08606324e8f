#ifndef KELD_TRANSLATOR_KIT_OPTIONS_H
#define KELD_TRANSLATOR_KIT_OPTIONS_H

#include <optional>
#include <string>

namespace transl_tk {
class IExecIO;
class IValue;
} // namespace transl_tk

namespace translator_kit {

/// Name of the option, of type bool, by which a host asks an import for metadata alone: what comes
/// is one attribute of type 14, the counts of the model that was read, and a part named
/// "empty_part". The kit does that for every translator.
inline constexpr char MetadataOnlyOption[] = "METADATA_ONLY";

/// The options that the host gave to a run, by name. The first option of a name counts, and its
/// first value. An option that is missing, without a value, or of another type gives nothing.
class Options
{
public:
    /// Looks into `options`, which must live as long.
    explicit Options(transl_tk::IExecIO & options) : m_Options(options) {}

    std::optional<std::string> text(std::string const & name) const;
    std::optional<int> integer(std::string const & name) const;
    std::optional<bool> flag(std::string const & name) const;

    /// A number with or without a fraction. The host's doubles arrive with six significant digits.
    std::optional<double> number(std::string const & name) const;

private:
    transl_tk::IValue * find(std::string const & name) const;

    transl_tk::IExecIO & m_Options;
};

} // namespace translator_kit

#endif
