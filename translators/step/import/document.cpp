#include "import/document.h"

#include <keld-translator-kit/translator.h>

#include <TDF_LabelSequence.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace step {

using translator_kit::Failure;
using translator_kit::Reason;

Handle(TDocStd_Document) newDocument()
{
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    return document;
}

Document readDocument(std::string const & path, FileKind kind, translator_kit::Run & run,
                      Coverage & coverage)
{
    Document result = kind == FileKind::Step   ? readStep(path, run, coverage)
                      : kind == FileKind::Iges ? readIges(path, run, coverage)
                                               : readBrep(path, kind == FileKind::BrepBinary, run);
    TDF_LabelSequence roots;
    XCAFDoc_DocumentTool::ShapeTool(result.content->Main())->GetFreeShapes(roots);
    if (roots.IsEmpty())
        throw Failure(Reason::EmptyModel, path + " holds no shape.");
    return result;
}

} // namespace step
