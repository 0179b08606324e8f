#include "import/document.h"
#include "import/kernel_faults.h"
#include "import/step_facts.h"
#include "import/step_unit.h"
#include "sign_of_life.h"
#include "transfer_progress.h"

#include <keld-translator-kit/translator.h>

#include <Interface_Static.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_DataMapOfPDExternFile.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <Standard_Failure.hxx>
#include <StepData_StepModel.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <TColStd_HSequenceOfTransient.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDF_ChildIterator.hxx>
#include <TDocStd_Document.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_DimTolTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <memory>
#include <vector>

namespace step {

namespace {

using translator_kit::Failure;
using translator_kit::Reason;
using translator_kit::Run;

std::string wordsOf(Standard_Failure const & failure)
{
    return std::string(failure.DynamicType()->Name()) + " " + failure.GetMessageString();
}

/// A reader whose steps can be taken one by one.
class Reader : public STEPCAFControl_Reader
{
public:
    /// Asks for all that stands beside the shapes, or for names alone.
    void askForAll(bool all)
    {
        SetNameMode(true);
        SetColorMode(all);
        SetLayerMode(all);
        SetPropsMode(all);
        SetMatMode(all);
        SetSHUOMode(all);
        SetGDTMode(all);
        SetViewMode(false);
    }

    /// Takes the steps that `askForAll(false)` left out. One that fails counts as lost.
    void addFacts(Handle(TDocStd_Document) & document, Coverage & coverage)
    {
        using transl_tk::HtmlLoggerEntry;
        auto const session = STEPCAFControl_Reader::Reader().WS();
        // No product of this file stands in another one.
        STEPCAFControl_DataMapOfPDExternFile const none;
        attempt(HtmlLoggerEntry::Attributes, "colours", coverage,
                [&] { ReadColors(session, document); });
        attempt(HtmlLoggerEntry::Attributes, "validation properties", coverage,
                [&] { ReadValProps(session, document, none); });
        attempt(HtmlLoggerEntry::Layers, "layers", coverage,
                [&] { ReadLayers(session, document); });
        attempt(HtmlLoggerEntry::Attributes, "colours of single occurrences", coverage,
                [&] { ReadSHUOs(session, document, none); });
        if (!attempt(HtmlLoggerEntry::PMIs, "dimensions and tolerances", coverage,
                     [&] { ReadGDTs(session, document); }))
            forgetTolerances(*document);
        attempt(HtmlLoggerEntry::Attributes, "materials", coverage,
                [&] { ReadMaterials(session, document, products()); });
    }

private:
    Handle(TColStd_HSequenceOfTransient) products()
    {
        Handle(TColStd_HSequenceOfTransient) const result = new TColStd_HSequenceOfTransient;
        auto const model = STEPCAFControl_Reader::Reader().StepModel();
        for (int i = 1; i <= model->NbEntities(); ++i) {
            if (model->Value(i)->IsKind(STANDARD_TYPE(StepRepr_ProductDefinitionShape)))
                result->Append(model->Value(i));
        }
        return result;
    }

    /// Of those that came before the failure, one may lack its limits.
    static void forgetTolerances(TDocStd_Document const & document)
    {
        auto const tool = XCAFDoc_DocumentTool::DimTolTool(document.Main());
        for (TDF_ChildIterator label(tool->BaseLabel()); label.More(); label.Next())
            label.Value().ForgetAllAttributes();
    }

    /// Whether the step was taken to its end.
    template <class Step>
    static bool attempt(Kind kind, char const * what, Coverage & coverage, Step && step)
    {
        try {
            callKernel(step);
            return true;
        } catch (Standard_Failure const & failure) {
            coverage.lost(kind, "",
                          std::string(what) + " made the kernel fail: " + wordsOf(failure));
            return false;
        }
    }
};

void parse(Reader & reader, std::string const & path, Run & run)
{
    run.phase("parse");
    SignOfLife const alive(run);
    if (reader.ReadFile(path.c_str()) != IFSelect_RetDone)
        throw Failure(Reason::Failed,
                      path + " is cut or damaged: it could not be read as a STEP file.");
}

/// Whether the kernel could load every entity with all that it refers to.
bool isWhole(StepData_StepModel const & model)
{
    for (int i = 1; i <= model.NbEntities(); ++i) {
        if (model.IsReportEntity(i))
            return false;
    }
    return true;
}

/// Leaves a reader alone until the process ends, which is soon: to free what it holds takes longer
/// than to make the model of it, and memory is at its highest before.
void keep(std::unique_ptr<Reader> reader)
{
    static auto & kept = *new std::vector<std::unique_ptr<Reader>>;
    kept.push_back(std::move(reader));
}

/// The entity that the kernel was done with last, such as "#12".
std::string lastEntity(STEPControl_Reader const & reader)
{
    auto const process = reader.WS()->TransferReader()->TransientProcess();
    if (process.IsNull() || process->NbMapped() == 0)
        return {};
    auto const entity = process->Mapped(process->NbMapped());
    auto const model = reader.StepModel();
    return model->Number(entity) == 0 ? std::string() : model->StringLabel(entity)->ToCString();
}

} // namespace

Document readStep(std::string const & path, Run & run, Coverage & coverage)
{
    STEPCAFControl_Controller::Init();
    Interface_Static::SetCVal("xstep.cascade.unit", "MM");
    for (bool const all : {true, false}) {
        // A reader that has failed is of no use any more.
        auto reader = std::make_unique<Reader>();
        reader->askForAll(all);
        parse(*reader, path, run);
        StepUnit const unit = unitOf(reader->ChangeReader());
        scaleOffsetCurves(reader->ChangeReader(), unit.millimetres);
        // The kernel falls over named shapes that refer to what is not in the file.
        Interface_Static::SetIVal("read.stepcaf.subshapes.name",
                                  isWhole(*reader->ChangeReader().StepModel()) ? 1 : 0);
        run.phase("transfer");
        // What is tried again has been shown before.
        int const start = all ? TransferStart : TransferEnd;
        run.progress(start);
        Document result;
        result.lengthUnit = unit.type;
        result.unitName = unit.name;
        result.content = newDocument();
        Handle(TransferProgress) const progress = new TransferProgress(
            run, start, TransferEnd, [&reader] { return lastEntity(reader->ChangeReader()); });
        try {
            callKernel([&] { reader->Transfer(result.content, progress->Start()); });
        } catch (Standard_Failure const & failure) {
            if (all)
                continue;
            throw Failure(Reason::Failed,
                          path + " made the kernel fail: " + wordsOf(failure) + ".");
        }
        if (!all)
            reader->addFacts(result.content, coverage);
        gatherFacts(reader->ChangeReader(), result, run, coverage);
        keep(std::move(reader));
        return result;
    }
    return {};
}

} // namespace step
