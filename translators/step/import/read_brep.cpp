#include "import/document.h"
#include "transfer_progress.h"

#include <keld-translator-kit/translator.h>

#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BinTools.hxx>
#include <TDataStd_Name.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS_Shape.hxx>
#include <TopoDS_TShape.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <filesystem>
#include <fstream>
#include <set>

namespace step {

using translator_kit::Failure;
using translator_kit::Reason;

namespace {

/// Whether a solid stands at several places: the compounds are then those of an assembly.
bool placesSolidsAgain(TopoDS_Shape const & shape)
{
    std::set<TopoDS_TShape const *> seen;
    TopTools_IndexedMapOfShape solids;
    TopExp::MapShapes(shape, TopAbs_SOLID, solids);
    for (int i = 1; i <= solids.Extent(); ++i) {
        if (!seen.insert(solids(i).TShape().get()).second)
            return true;
    }
    return false;
}

} // namespace

Document readBrep(std::string const & path, bool binary, translator_kit::Run & run)
{
    run.phase("parse");
    TopoDS_Shape shape;
    Handle(TransferProgress) const progress = new TransferProgress(run, TransferStart, TransferEnd);
    // At the end of a file that is cut the kernel would wait for ever for what it seeks.
    std::ifstream stream(path, std::ios::binary);
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    try {
        if (binary)
            BinTools::Read(shape, stream, progress->Start());
        else
            BRepTools::Read(shape, stream, BRep_Builder(), progress->Start());
    } catch (std::ios_base::failure const &) {
        shape.Nullify();
    }
    if (shape.IsNull())
        throw Failure(Reason::Failed, path + " is cut or damaged: no shape could be read from it.");

    Document result;
    result.content = newDocument();
    auto const shapes = XCAFDoc_DocumentTool::ShapeTool(result.content->Main());
    TDF_Label const label = shapes->AddShape(shape, placesSolidsAgain(shape));
    TDataStd_Name::Set(label, std::filesystem::path(path).stem().c_str());
    result.entityOf = [](TopoDS_Shape const &) { return std::string(); };
    return result;
}

} // namespace step
