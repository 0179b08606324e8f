#include "export/write_file.h"

#include "kernel_messages.h"

#include <keld-translator-kit/translator.h>

#include <Standard_Failure.hxx>
#include <algorithm>
#include <filesystem>

namespace step {

namespace {

using translator_kit::Failure;
using translator_kit::Reason;
using translator_kit::Run;

std::string suffixOf(std::string const & path)
{
    std::string suffix = std::filesystem::path(path).extension();
    std::transform(suffix.begin(), suffix.end(), suffix.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return suffix;
}

void write(std::string const & path, Run & run)
{
    std::string const suffix = suffixOf(path);
    if (suffix == ".step" || suffix == ".stp" || suffix == ".p21")
        writeStep(path, run);
    else if (suffix == ".stl")
        writeStl(path, run);
    else
        throw Failure(Reason::UnsupportedFileType,
                      "Cannot write " + path +
                          ": the name must end in .step, .stp or .p21 for STEP, or in .stl for "
                          "facets.");
}

} // namespace

void writeFile(std::string const & path, Run & run)
{
    KernelMessages messages;
    try {
        run.progress(0);
        write(path, run);
        messages.tell(run);
    } catch (Standard_Failure const & failure) {
        messages.tell(run);
        throw Failure(Reason::ExportFailed, "Writing " + path + " made the kernel fail: " +
                                                failure.DynamicType()->Name() + " " +
                                                failure.GetMessageString() + ".");
    } catch (Failure const &) {
        messages.tell(run);
        throw;
    }
}

void expectNone(std::vector<std::string> const & differences, std::string const & path, Run & run)
{
    if (differences.empty())
        return;
    for (std::string const & difference : differences)
        run.error(difference);
    throw Failure(Reason::ExportFailed, "What was written to " + path +
                                            " was read back and is not the model; the file is "
                                            "dropped.");
}

} // namespace step
