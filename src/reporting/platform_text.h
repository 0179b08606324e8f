#ifndef KELD_TRANSL_SRC_REPORTING_PLATFORM_TEXT_H
#define KELD_TRANSL_SRC_REPORTING_PLATFORM_TEXT_H

#include <keld-common/files.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

namespace transl_tk {

struct FreeText
{
    void operator()(char * text) const { std::free(text); }
};

/// A text that the platform library allocated.
using PlatformText = std::unique_ptr<char, FreeText>;

/// The value of environment variable `name`, none when it is not set.
inline std::optional<std::string> environmentText(char const * name)
{
    PlatformText const value(getenv_utf8(name));
    if (value == nullptr)
        return std::nullopt;
    return value.get();
}

} // namespace transl_tk

#endif
