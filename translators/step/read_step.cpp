#include "document.h"
#include "sign_of_life.h"
#include "step_facts.h"
#include "transfer_progress.h"

#include <keld-translator-kit/translator.h>

#include <Interface_Static.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <Standard_Failure.hxx>
#include <StepData_StepModel.hxx>
#include <memory>
#include <vector>

namespace step {

namespace {

using translator_kit::Failure;
using translator_kit::Reason;
using translator_kit::Run;

/// How much is asked of the kernel. What fails is tried again with less.
enum class Demand { All, WithoutTolerances, ShapesOnly };

void demand(STEPCAFControl_Reader & reader, Demand demand)
{
    bool const more = demand != Demand::ShapesOnly;
    reader.SetNameMode(true);
    reader.SetColorMode(more);
    reader.SetLayerMode(more);
    reader.SetPropsMode(more);
    reader.SetMatMode(more);
    reader.SetSHUOMode(more);
    reader.SetViewMode(false);
    reader.SetGDTMode(demand == Demand::All);
}

void parse(STEPCAFControl_Reader & reader, std::string const & path, Run & run)
{
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
void keep(std::unique_ptr<STEPCAFControl_Reader> reader)
{
    static auto & kept = *new std::vector<std::unique_ptr<STEPCAFControl_Reader>>;
    kept.push_back(std::move(reader));
}

std::string wordsOf(Standard_Failure const & failure)
{
    return std::string(failure.DynamicType()->Name()) + " " + failure.GetMessageString();
}

} // namespace

Document readStep(std::string const & path, Run & run, Coverage & coverage)
{
    using transl_tk::HtmlLoggerEntry;

    STEPCAFControl_Controller::Init();
    Interface_Static::SetCVal("xstep.cascade.unit", "MM");
    for (Demand const level : {Demand::All, Demand::WithoutTolerances, Demand::ShapesOnly}) {
        // A reader that has failed is of no use any more.
        auto reader = std::make_unique<STEPCAFControl_Reader>();
        demand(*reader, level);
        parse(*reader, path, run);
        // The kernel falls over named shapes that refer to what is not in the file.
        Interface_Static::SetIVal("read.stepcaf.subshapes.name",
                                  isWhole(*reader->Reader().StepModel()) ? 1 : 0);
        run.progress(TransferStart);
        Document result;
        result.content = newDocument();
        Handle(TransferProgress) const progress =
            new TransferProgress(run, TransferStart, TransferEnd);
        try {
            reader->Transfer(result.content, progress->Start());
        } catch (Standard_Failure const & failure) {
            if (level == Demand::All)
                coverage.lost(HtmlLoggerEntry::PMIs, "",
                              "the dimensions and tolerances made the kernel fail: " +
                                  wordsOf(failure));
            else if (level == Demand::WithoutTolerances)
                coverage.lost(HtmlLoggerEntry::Attributes, "",
                              "colours, layers, materials and properties made the kernel fail: " +
                                  wordsOf(failure));
            else
                throw Failure(Reason::Failed,
                              path + " made the kernel fail: " + wordsOf(failure) + ".");
            continue;
        }
        gatherFacts(reader->ChangeReader(), result, coverage);
        keep(std::move(reader));
        return result;
    }
    return {};
}

} // namespace step
