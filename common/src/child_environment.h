#ifndef KELD_COMMON_CHILD_ENVIRONMENT_H
#define KELD_COMMON_CHILD_ENVIRONMENT_H

#include <string>
#include <string_view>
#include <vector>

namespace keld_common {

/// Directories of a search path in the platform's form: separated by colons (a semicolon counts as
/// one), without empty elements, which would mean the working directory.
std::string normalizedPath(std::string_view path);

/// The environment of this process with what a translator needs: its channel, and `libraryPath`,
/// when not null and not empty, in front of LD_LIBRARY_PATH.
std::vector<std::string> childEnvironment(char const * libraryPath, int commands, int frames);

} // namespace keld_common

#endif
