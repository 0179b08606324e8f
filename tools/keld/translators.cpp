#include "translators.h"

#include "file_content.h"
#include "installation.h"
#include "step_paths.h"

#include <keld-common/files.h>
#include <keld-transl/process/product_paths.h>
#include <keld-transl/process/server.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <type_traits>

namespace keld {

namespace {

constexpr unsigned int ScriptWithLinuxExecutable = 2;
constexpr unsigned int OwnServerType = 1;

template <class Paths> std::unique_ptr<transl_tk::ExecPaths> make()
{
    return std::make_unique<Paths>();
}

/// Opens what `Paths` makes its command of.
template <class Paths> struct OpenPaths : Paths
{
    OpenPaths() { this->m_System = ScriptWithLinuxExecutable; }

    /// The commands that `calcExecCmd` takes the first of that is there.
    std::vector<std::string> scripts()
    {
        char const * const directory = std::getenv("VORN_EXEC_DIR");
        std::vector<std::string> result;
        if constexpr (std::is_same_v<Paths, transl_tk::CTPaths>) {
            if (std::string const folder = this->sharedFolder(); !folder.empty())
                result.push_back(folder + this->installationExec());
        } else if (directory != nullptr) {
            result.push_back(directory + this->installationExec());
        }
        if (directory != nullptr)
            result.push_back(directory + this->localExec());
        return result;
    }
};

template <class Paths> std::vector<TriedPath> tryScripts()
{
    return tryPrograms(OpenPaths<Paths>().scripts());
}

/// A translator that is found by rules of its own.
struct Product
{
    char const * name;
    unsigned int serverType;
    std::vector<std::string> suffixes;
    std::vector<FileContent> contents;
    std::vector<LibraryPlace> libraries;
    std::unique_ptr<transl_tk::ExecPaths> (*make)();
    std::vector<TriedPath> (*tryScripts)();
};

/// The product's translators, the one for STEP, and what they serve. Any other suffix is the name
/// of a translator of its own.
std::vector<Product> const & products()
{
    using namespace transl_tk;
    static std::vector<Product> const table = {
        {"jt",
         2,
         {".jt"},
         {FileContent::Jt},
         {{"JT_OPEN_PATH", "/JtTk107.dll", true}},
         make<JTPaths>,
         tryScripts<JTPaths>},
        {"ct",
         4,
         {},
         {},
         {{"CT_LIB_PATH", "/ct_reader.dll", true}, {"CT_LIB_PATH_DBG", "/ct_reader.dll", true}},
         make<CTPaths>,
         tryScripts<CTPaths>},
        {"rhino",
         8,
         {".3dm"},
         {FileContent::Rhino},
         {{"RHINO_LIB_PATH", "/opennurbs_public.dll", true}},
         make<RhinoPaths>,
         tryScripts<RhinoPaths>},
        {"u3dpdf",
         16,
         {".u3d", ".pdf"},
         {FileContent::U3d, FileContent::Pdf},
         {{"U3DPDF_LIB_PATH", "/IFXCore.dll", true}},
         make<U3dPdfPaths>,
         tryScripts<U3dPdfPaths>},
        {"step",
         OwnServerType,
         {".step", ".stp", ".p21", ".iges", ".igs", ".brep"},
         {FileContent::Step, FileContent::Iges, FileContent::Brep},
         {{"STEP_LIB_PATH", "", false}},
         make<StepPaths>,
         tryScripts<StepPaths>},
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

void append(std::vector<TriedPath> & all, std::vector<TriedPath> const & more)
{
    all.insert(all.end(), more.begin(), more.end());
}

TranslatorChoice choose(Product const & product)
{
    TranslatorChoice choice;
    choice.name = product.name;
    choice.serverType = product.serverType;
    choice.paths = product.make();
    choice.paths->m_System = ScriptWithLinuxExecutable;
    bool const isInstalled = choice.paths->isInstalled();
    std::string const command = choice.paths->calcExecCmd();
    std::vector<TriedPath> const executables = tryExecutables(*choice.paths, command);
    if (isInstalled && transl_tk::Server::exist(command.c_str()) && isFound(executables.back()))
        return choice;
    choice.trouble = isInstalled ? "cannot be started" : "is not installed";
    append(choice.tried, tryLibrary(product.libraries));
    append(choice.tried, product.tryScripts());
    append(choice.tried, executables);
    return choice;
}

TranslatorChoice choose(std::string const & name)
{
    for (Product const & product : products()) {
        if (name == product.name)
            return choose(product);
    }
    auto paths = std::make_unique<KeldPaths>(name);
    TranslatorChoice choice;
    choice.name = name;
    choice.trouble = paths->trouble();
    if (!choice.trouble.empty())
        choice.tried = paths->triedPaths();
    choice.paths = std::move(paths);
    return choice;
}

/// The translator that serves what a file holds; empty for none.
std::string translatorFor(FileContent content)
{
    if (content == FileContent::Stl)
        return "stl";
    for (Product const & product : products()) {
        if (std::count(product.contents.begin(), product.contents.end(), content) != 0)
            return product.name;
    }
    return {};
}

/// The suffix of `file` in small letters, without its dot.
std::string suffixOf(std::string const & file)
{
    std::string const suffix = lowerCase(std::filesystem::path(file).extension());
    return suffix.empty() ? suffix : suffix.substr(1);
}

/// The translator that serves files named like `file`; empty for none.
std::string translatorForName(std::string const & file)
{
    std::string const suffix = suffixOf(file);
    for (Product const & product : products()) {
        if (std::count(product.suffixes.begin(), product.suffixes.end(), "." + suffix) != 0)
            return product.name;
    }
    return suffix;
}

TranslatorChoice chooseNamed(std::string const & name)
{
    if (isName(name))
        return choose(name);
    TranslatorChoice choice;
    choice.name = name;
    choice.trouble = "is not known: the file name has no suffix that names one";
    return choice;
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
    for (TriedPath const & tried : triedPaths()) {
        if (!isFound(tried))
            return troubleWith(tried);
    }
    std::string const command = calcExecCmd();
    return transl_tk::Server::exist(command.c_str()) ? "" : "cannot be started: " + command;
}

std::vector<TriedPath> KeldPaths::triedPaths()
{
    return {tryProgram(translatorDirectory() + "/" + installationName()),
            tryProgram(translatorDirectory() + linuxExecInstallation())};
}

TranslatorChoice chooseForImport(std::string const & name, std::string const & file)
{
    if (!name.empty())
        return chooseNamed(name);
    FileContent const content = contentOf(file);
    std::string const byContent = translatorFor(content);
    std::string const byName = translatorForName(file);
    TranslatorChoice choice = chooseNamed(byContent.empty() ? byName : byContent);
    if (!byContent.empty() && !byName.empty() && byContent != byName)
        choice.remark = "its name says " + suffixOf(file) + ", its content is " + nameOf(content) +
                        "; taking the translator \"" + byContent + "\".";
    return choice;
}

TranslatorChoice chooseForExport(std::string const & name, std::string const & file)
{
    return chooseNamed(name.empty() ? translatorForName(file) : name);
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
