#include "translators.h"

#include "installation.h"

#include <keld-common/files.h>
#include <keld-transl/process/product_paths.h>
#include <keld-transl/process/server.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <set>

namespace keld {

namespace {

constexpr unsigned int ScriptWithLinuxExecutable = 2;
constexpr unsigned int OwnServerType = 1;

template <class Paths> std::unique_ptr<transl_tk::ExecPaths> make()
{
    return std::make_unique<Paths>();
}

/// The product's translators and the suffixes that they serve. Any other suffix is the name of a
/// translator of its own.
struct Product
{
    char const * name;
    unsigned int serverType;
    std::vector<std::string> suffixes;
    std::unique_ptr<transl_tk::ExecPaths> (*make)();
};

std::vector<Product> const & products()
{
    static std::vector<Product> const table = {
        {"jt", 2, {".jt"}, make<transl_tk::JTPaths>},
        {"ct", 4, {}, make<transl_tk::CTPaths>},
        {"rhino", 8, {".3dm"}, make<transl_tk::RhinoPaths>},
        {"u3dpdf", 16, {".u3d", ".pdf"}, make<transl_tk::U3dPdfPaths>},
    };
    return table;
}

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool isName(std::string const & text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) {
        return std::isalnum(c) || c == '_' || c == '-';
    });
}

TranslatorChoice choose(Product const & product)
{
    TranslatorChoice choice{product.name, product.serverType, product.make(), {}};
    choice.paths->m_System = ScriptWithLinuxExecutable;
    if (!choice.paths->isInstalled())
        choice.trouble = "is not installed";
    else if (!transl_tk::Server::exist(choice.paths->calcExecCmd().c_str()))
        choice.trouble = "cannot be started";
    return choice;
}

TranslatorChoice choose(std::string const & name)
{
    auto paths = std::make_unique<KeldPaths>(name);
    std::string trouble = paths->trouble();
    return {name, OwnServerType, std::move(paths), trouble};
}

/// The name in "keld_<name>.sh", empty for any other file name.
std::string nameOfScript(std::string const & fileName)
{
    std::string const start = "keld_";
    std::string const end = ".sh";
    if (fileName.size() <= start.size() + end.size() ||
        fileName.compare(0, start.size(), start) != 0 ||
        fileName.compare(fileName.size() - end.size(), end.size(), end) != 0)
        return {};
    return fileName.substr(start.size(), fileName.size() - start.size() - end.size());
}

std::string troubleWith(std::string const & path)
{
    if (iaccess(path.c_str(), "e") != 0)
        return "is not installed: there is no " + path;
    if (iaccess(path.c_str(), "x") != 0)
        return "cannot be started: " + path + " is not executable";
    return {};
}

} // namespace

KeldPaths::KeldPaths(std::string const & name) : ExecPaths("KELD_LIB_PATH"), m_Name(name)
{
    m_System = ScriptWithLinuxExecutable;
}

bool KeldPaths::isInstalled()
{
    return trouble().empty();
}

std::string KeldPaths::calcLibPath()
{
    char const * const path = std::getenv(m_LibPathVariable.c_str());
    return path ? path : "";
}

std::string KeldPaths::localName()
{
    return "keld_" + m_Name + ".sh";
}

std::string KeldPaths::installationName()
{
    return localName();
}

std::string KeldPaths::linuxExecLocal()
{
    return linuxExecInstallation();
}

std::string KeldPaths::linuxExecInstallation()
{
    return "/keld_" + m_Name + "_linux_x86_64";
}

std::string KeldPaths::trouble()
{
    std::string const script = translatorDirectory() + "/" + installationName();
    std::string result = troubleWith(script);
    if (result.empty())
        result = troubleWith(translatorDirectory() + linuxExecInstallation());
    if (result.empty() && !transl_tk::Server::exist(calcExecCmd().c_str()))
        result = "cannot be started: " + script;
    return result;
}

TranslatorChoice chooseTranslator(std::string const & name, std::string const & file)
{
    std::string const suffix = lowerCase(std::filesystem::path(file).extension());
    for (Product const & product : products()) {
        bool const serves = std::find(product.suffixes.begin(), product.suffixes.end(), suffix) !=
                            product.suffixes.end();
        if (name.empty() ? serves : name == product.name)
            return choose(product);
    }

    std::string const own = name.empty() && !suffix.empty() ? suffix.substr(1) : name;
    if (isName(own))
        return choose(own);
    return {own, OwnServerType, nullptr,
            "is not known: the file name has no suffix that names one"};
}

std::vector<TranslatorChoice> allTranslators()
{
    std::set<std::string> names;
    std::error_code error;
    for (auto const & entry : std::filesystem::directory_iterator(translatorDirectory(), error)) {
        std::string const name = nameOfScript(entry.path().filename());
        if (isName(name))
            names.insert(name);
    }
    std::vector<TranslatorChoice> result;
    for (Product const & product : products()) {
        names.erase(product.name);
        result.push_back(choose(product));
    }
    for (std::string const & name : names)
        result.push_back(choose(name));
    return result;
}

} // namespace keld
