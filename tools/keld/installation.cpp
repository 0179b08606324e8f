#include "installation.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace keld {

void chooseInstallation()
{
    std::error_code error;
    auto const program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error)
        setenv("VORN_EXEC_DIR", program.parent_path().parent_path().c_str(), 0);
}

std::string translatorDirectory()
{
    char const * const installation = std::getenv("VORN_EXEC_DIR");
    return installation ? std::string(installation) + "/bin" : std::string();
}

} // namespace keld
