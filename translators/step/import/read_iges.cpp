#include "import/document.h"
#include "sign_of_life.h"
#include "transfer_progress.h"

#include <keld-translator-kit/translator.h>

#include <IGESCAFControl_Reader.hxx>
#include <IGESData_IGESModel.hxx>
#include <Interface_Check.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TopoDS_Shape.hxx>
#include <Transfer_Binder.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

namespace step {

namespace {

using transl_tk::Units;
using translator_kit::Failure;
using translator_kit::Reason;

Units::LengthType lengthUnitOf(IGESData_GlobalSection const & global)
{
    switch (global.UnitFlag()) {
    case 1:
        return Units::Inch;
    case 4:
        return Units::Foot;
    case 5:
        return Units::Mile;
    case 6:
        return Units::Metre;
    case 7:
        return Units::Kilometre;
    case 9:
        return Units::Micron;
    case 10:
        return Units::Centimetre;
    default:
        return Units::Millimetre;
    }
}

std::string textOf(Handle(TCollection_HAsciiString) const & text)
{
    return text.IsNull() ? std::string() : text->ToCString();
}

} // namespace

Document readIges(std::string const & path, translator_kit::Run & run, Coverage & coverage)
{
    IGESCAFControl_Reader reader;
    reader.SetColorMode(true);
    reader.SetNameMode(true);
    reader.SetLayerMode(true);
    {
        run.phase("parse");
        SignOfLife const alive(run);
        if (reader.ReadFile(path.c_str()) != IFSelect_RetDone)
            throw Failure(Reason::Failed,
                          path + " is cut or damaged: it could not be read as an IGES file.");
    }
    run.phase("transfer");
    Document result;
    result.content = newDocument();
    Handle(TransferProgress) const progress = new TransferProgress(run, TransferStart, TransferEnd);
    reader.Transfer(result.content, progress->Start());

    auto const model = reader.IGESModel();
    IGESData_GlobalSection const global = model->GlobalSection();
    result.lengthUnit = lengthUnitOf(global);
    result.unitName = textOf(global.UnitName());
    result.header = {{"file_name", textOf(global.FileName())},
                     {"time_stamp", textOf(global.Date())},
                     {"author", textOf(global.AuthorName())},
                     {"organization", textOf(global.CompanyName())},
                     {"originating_system", textOf(global.SystemId())},
                     {"preprocessor_version", textOf(global.InterfaceVersion())}};

    auto const transfer = reader.WS()->TransferReader();
    auto const process = transfer->TransientProcess();
    for (int i = 1; i <= model->NbEntities(); ++i) {
        auto const binder = process->Find(model->Value(i));
        if (!binder.IsNull() && binder->Check()->HasFailed())
            coverage.lost(transl_tk::HtmlLoggerEntry::Object,
                          textOf(model->StringLabel(model->Value(i))), binder->Check()->CFail(1));
    }
    result.entityOf = [transfer, model](TopoDS_Shape const & shape) {
        auto const entity = transfer->EntityFromShapeResult(shape, 1);
        return entity.IsNull() ? std::string() : textOf(model->StringLabel(entity));
    };
    return result;
}

} // namespace step
