#include "import/read_file.h"

#include "coverage.h"
#include "import/document.h"
#include "import/file_kind.h"
#include "import/kernel_faults.h"
#include "import/structure.h"
#include "kernel_messages.h"

#include <keld-translator-kit/translator.h>

#include <Standard_Failure.hxx>
#include <filesystem>

namespace step {

namespace {

using translator_kit::Failure;
using translator_kit::Reason;
using translator_kit::Run;

Document documentFrom(std::string const & path, FileKind kind, Run & run, Coverage & coverage)
{
    KernelFaults const faults;
    Document document;
    callKernel([&] { document = readDocument(path, kind, run, coverage); });
    if (faults.count() > 0)
        run.warning("Open CASCADE fell " + std::to_string(faults.count()) +
                    " times over something that " + path + " refers to and that is not there.");
    return document;
}

void read(std::string const & path, Run & run)
{
    run.phase("look at the file");
    run.progress(0);
    FileKind const kind = fileKindOf(path);
    std::string const words = disagreement(path, kind);
    if (!words.empty())
        run.warning(words);
    Coverage coverage;
    Document const document = documentFrom(path, kind, run, coverage);
    FacetSettings const facets(run.options());
    Structure(document, std::filesystem::path(path).stem(), facets, coverage).build(run);
    coverage.report(run);
    run.progress(100);
}

} // namespace

void readFile(std::string const & path, Run & run)
{
    KernelMessages messages;
    try {
        read(path, run);
        messages.tell(run);
    } catch (Standard_Failure const & failure) {
        messages.tell(run);
        throw Failure(Reason::Failed, path + " made the kernel fail " + run.place() + ": " +
                                          failure.DynamicType()->Name() + " " +
                                          failure.GetMessageString() + ".");
    } catch (Failure const &) {
        messages.tell(run);
        throw;
    }
}

} // namespace step
