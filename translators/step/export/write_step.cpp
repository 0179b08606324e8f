#include "export/file_buffer.h"
#include "export/file_unit.h"
#include "export/inventory.h"
#include "export/model_document.h"
#include "export/step_header.h"
#include "export/write_file.h"
#include "import/document.h"
#include "sign_of_life.h"
#include "transfer_progress.h"

#include <keld-translator-kit/options.h>
#include <keld-translator-kit/translator.h>

#include <Interface_Static.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <STEPConstruct.hxx>
#include <StepBasic_Product.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepWriter.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDataStd_Name.hxx>
#include <Transfer_FinderProcess.hxx>
#include <XSControl_TransferWriter.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

namespace step {

namespace {

using translator_kit::Failure;
using translator_kit::OutputFile;
using translator_kit::Reason;
using translator_kit::Run;

constexpr int BuildEnd = 40;
constexpr int WriteEnd = 60;
constexpr int ReadEnd = 90;

/// The kernel's word for the schema that the option "schema" asks for.
char const * schemaOf(Run const & run)
{
    std::string const asked = run.options().text("schema").value_or("ap242");
    if (asked == "ap242" || asked == "AP242")
        return "AP242DIS";
    if (asked == "ap214" || asked == "AP214")
        return "AP214IS";
    throw Failure(Reason::ExportFailed,
                  "There is no schema \"" + asked + "\": the values are ap242 and ap214.");
}

Handle(TCollection_HAsciiString) ascii(std::string const & text)
{
    return new TCollection_HAsciiString(text.c_str());
}

std::string keyOf(std::size_t index)
{
    return "product " + std::to_string(index);
}

/// Names products by keys that no two of them share.
void setKeys(std::vector<OutgoingProduct> const & products)
{
    for (std::size_t i = 0; i < products.size(); ++i)
        TDataStd_Name::Set(products[i].label, keyOf(i).c_str());
}

/// Puts names in the place of the keys by which the products went through the kernel.
void nameProducts(StepData_StepModel const & model, std::vector<OutgoingProduct> const & products)
{
    std::map<std::string, OutgoingProduct const *> byKey;
    for (std::size_t i = 0; i < products.size(); ++i)
        byKey[keyOf(i)] = &products[i];
    for (int i = 1; i <= model.NbEntities(); ++i) {
        auto const product = Handle(StepBasic_Product)::DownCast(model.Value(i));
        if (product.IsNull() || product->Name().IsNull())
            continue;
        auto const found = byKey.find(product->Name()->ToCString());
        if (found == byKey.end())
            continue;
        product->SetId(ascii(found->second->id));
        product->SetName(ascii(found->second->name));
        product->SetDescription(ascii(found->second->description));
    }
    for (OutgoingProduct const & product : products)
        TDataStd_Name::Set(product.label, TCollection_ExtendedString(product.name.c_str(), true));
}

void nameShapes(Handle(Transfer_FinderProcess) const & process, ModelDocument const & document)
{
    for (auto const & [shape, name] : document.names()) {
        auto const item = STEPConstruct::FindEntity(process, shape);
        if (!item.IsNull())
            item->SetName(ascii(name));
    }
}

void writeDocument(ModelDocument const & document, OutputFile & file, std::string const & path,
                   Run & run)
{
    STEPCAFControl_Writer writer;
    writer.SetColorMode(true);
    writer.SetLayerMode(true);
    writer.SetNameMode(true);
    writer.SetPropsMode(true);
    writer.SetMaterialMode(true);
    writer.SetDimTolMode(false);
    setKeys(document.products());
    Handle(TransferProgress) const progress = new TransferProgress(run, BuildEnd, WriteEnd);
    if (!writer.Transfer(document.content(), STEPControl_AsIs, nullptr, progress->Start()))
        throw Failure(Reason::ExportFailed, "The kernel could not make a STEP file of the model.");
    auto const model = writer.ChangeWriter().Model();
    nameProducts(*model, document.products());
    setHeader(model, document.facts(), path);
    nameShapes(writer.ChangeWriter().WS()->TransferWriter()->FinderProcess(), document);

    SignOfLife const alive(run);
    FileBuffer buffer(file);
    std::ostream stream(&buffer);
    StepData_StepWriter sender(model);
    sender.SendModel(Handle(StepData_Protocol)::DownCast(model->Protocol()));
    sender.Print(stream);
    buffer.finish();
    if (!stream)
        throw Failure(Reason::ExportFailed, "Cannot write " + path + ".");
}

/// The document that stands in a file, read as if it came from elsewhere.
Handle(TDocStd_Document) readBack(std::string const & path, Run & run)
{
    Interface_Static::SetCVal("xstep.cascade.unit", "MM");
    STEPCAFControl_Reader reader;
    reader.SetNameMode(true);
    reader.SetColorMode(true);
    reader.SetLayerMode(true);
    reader.SetMatMode(true);
    reader.SetPropsMode(false);
    reader.SetGDTMode(false);
    reader.SetViewMode(false);
    {
        SignOfLife const alive(run);
        if (reader.ReadFile(path.c_str()) != IFSelect_RetDone)
            return nullptr;
    }
    Handle(TDocStd_Document) document = newDocument();
    Handle(TransferProgress) const progress = new TransferProgress(run, WriteEnd, ReadEnd);
    if (!reader.Transfer(document, progress->Start()))
        return nullptr;
    return document;
}

/// A way of writing. Which of them a reader makes the same shape of depends on the shape.
struct Way
{
    int precision; ///< 1 announces the greatest tolerance of a shape, 0 the average one
    int uvCurves;  ///< 1 writes them, 0 leaves them to the reader
};
constexpr Way Ways[] = {{1, 1}, {1, 0}, {0, 1}};

} // namespace

void writeStep(std::string const & path, Run & run)
{
    STEPCAFControl_Controller::Init();
    Interface_Static::SetCVal("write.step.schema", schemaOf(run));
    {
        OutputFile const early(path);
    } // before any work
    Coverage coverage;
    FileUnit const unit = fileUnitOf(run);
    ModelDocument document(run.model(), std::filesystem::path(path).stem(), unit.millimetres,
                           coverage);
    document.build(run);
    if (document.products().empty()) {
        coverage.report(run, "in the model");
        throw Failure(Reason::EmptyModel,
                      "The model holds nothing that STEP can take; " + path + " is not written.");
    }
    Interface_Static::SetCVal("write.step.unit", unit.word);
    std::vector<std::string> faults;
    std::optional<Inventory> expected;
    for (Way const & way : Ways) {
        Interface_Static::SetIVal("write.precision.mode", way.precision);
        Interface_Static::SetIVal("write.surfacecurve.mode", way.uvCurves);
        OutputFile file(path);
        writeDocument(document, file, path, run);
        auto const read = readBack(file.readingPath(), run);
        if (read.IsNull()) {
            faults = {"It could not be read."};
            continue;
        }
        if (!expected)
            expected = inventoryOf(document.content());
        Inventory const found = inventoryOf(read);
        faults = differences(*expected, found);
        if (!faults.empty())
            continue;
        file.commit();
        for (std::string const & fact : lostInstanceFacts(*expected, found))
            coverage.lost(transl_tk::HtmlLoggerEntry::Attributes, "",
                          "the " + fact + ", which the kernel does not write");
        coverage.report(run, "in the model");
        run.progress(100);
        return;
    }
    expectNone(faults, path, run);
}

} // namespace step
