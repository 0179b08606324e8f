#include "tried_paths.h"

#include <keld-common/files.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace keld {

namespace {

constexpr char Found[] = "found";
constexpr char NotThere[] = "not there";
constexpr char NotSet[] = "not set";

TriedPath tryFile(std::string const & path)
{
    if (iaccess(path.c_str(), "e") == 0)
        return {path, Found};
    return {path, errno == ENOENT || errno == ENOTDIR ? NotThere : "not accessible"};
}

} // namespace

bool isFound(TriedPath const & tried)
{
    return tried.finding == Found;
}

std::string troubleWith(TriedPath const & tried)
{
    if (isFound(tried))
        return {};
    if (tried.finding == NotThere)
        return "is not installed: there is no " + tried.path;
    return "cannot be started: " + tried.path + " is " + tried.finding;
}

TriedPath tryProgram(std::string const & path)
{
    TriedPath tried = tryFile(path);
    std::error_code error;
    if (isFound(tried) && !std::filesystem::is_regular_file(path, error))
        tried.finding = "no regular file";
    else if (isFound(tried) && iaccess(path.c_str(), "x") != 0)
        tried.finding = "not executable";
    return tried;
}

std::vector<TriedPath> tryLibrary(std::vector<LibraryPlace> const & places)
{
    std::vector<TriedPath> result;
    for (LibraryPlace const & place : places) {
        char const * const folder = std::getenv(place.variable);
        if (folder != nullptr)
            result.push_back(tryFile(std::string(folder) + place.file));
        else if (place.isNeeded)
            result.push_back({place.variable, NotSet});
        if (folder == nullptr || isFound(result.back()))
            break;
    }
    return result;
}

std::vector<TriedPath> tryPrograms(std::vector<std::string> const & paths)
{
    std::vector<TriedPath> result;
    for (std::string const & path : paths) {
        result.push_back(tryProgram(path));
        if (iaccess(path.c_str(), "e") == 0)
            break;
    }
    return result;
}

std::vector<TriedPath> tryExecutables(transl_tk::ExecPaths & paths, std::string const & script)
{
    std::size_t const slash = script.rfind('/');
    if (slash == script.npos)
        return {{"VORN_EXEC_DIR", NotSet}};
    std::string const folder = script.substr(0, slash);
    return tryPrograms({folder + paths.linuxExecInstallation(), folder + paths.linuxExecLocal()});
}

} // namespace keld
