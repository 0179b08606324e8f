#include "import/step_facts.h"

#include <keld-translator-kit/limited_warnings.h>
#include <keld-translator-kit/run.h>

#include <APIHeaderSection_MakeHeader.hxx>
#include <Interface_Check.hxx>
#include <Interface_ReportEntity.hxx>
#include <STEPControl_Reader.hxx>
#include <StepBasic_Product.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionFormation.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_UndefinedEntity.hxx>
#include <StepGeom_Curve.hxx>
#include <StepGeom_Surface.hxx>
#include <StepShape_ConnectedFaceSet.hxx>
#include <StepShape_Edge.hxx>
#include <StepShape_FaceBound.hxx>
#include <StepShape_FaceSurface.hxx>
#include <StepShape_Loop.hxx>
#include <StepShape_ManifoldSolidBrep.hxx>
#include <StepShape_ShellBasedSurfaceModel.hxx>
#include <StepShape_Vertex.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TopoDS_Shape.hxx>
#include <TopoDS_TShape.hxx>
#include <TransferBRep.hxx>
#include <Transfer_Binder.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <map>
#include <memory>
#include <unordered_map>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;

std::string textOf(Handle(TCollection_HAsciiString) const & text)
{
    return text.IsNull() ? std::string() : text->ToCString();
}

void gatherHeader(Handle(StepData_StepModel) const & model, Document & document)
{
    APIHeaderSection_MakeHeader const header(model);
    auto const add = [&](char const * name, std::string const & text) {
        if (!text.empty())
            document.header.emplace_back(name, text);
    };
    if (header.HasFn()) {
        add("file_name", textOf(header.Name()));
        add("time_stamp", textOf(header.TimeStamp()));
        for (int i = 1; i <= header.NbAuthor(); ++i)
            add("author", textOf(header.AuthorValue(i)));
        for (int i = 1; i <= header.NbOrganization(); ++i)
            add("organization", textOf(header.OrganizationValue(i)));
        add("preprocessor_version", textOf(header.PreprocessorVersion()));
        add("originating_system", textOf(header.OriginatingSystem()));
        add("authorisation", textOf(header.Authorisation()));
    }
    if (header.HasFd()) {
        for (int i = 1; i <= header.NbDescription(); ++i)
            add("description", textOf(header.DescriptionValue(i)));
    }
    if (header.HasFs()) {
        for (int i = 1; i <= header.NbSchemaIdentifiers(); ++i)
            add("schema", textOf(header.SchemaIdentifiersValue(i)));
    }
}

void gatherProduct(Handle(StepBasic_ProductDefinition) const & definition,
                   Handle(Transfer_TransientProcess) const & process, Document & document)
{
    auto const shapes = XCAFDoc_DocumentTool::ShapeTool(document.content->Main());
    TopoDS_Shape const shape = TransferBRep::ShapeResult(process, definition);
    if (shape.IsNull() || definition->Formation().IsNull() ||
        definition->Formation()->OfProduct().IsNull())
        return;
    TDF_Label const label = shapes->FindShape(shape);
    auto const product = definition->Formation()->OfProduct();
    if (!label.IsNull())
        document.products.push_back({label, textOf(product->Id()), textOf(product->Description())});
}

Kind kindOf(Handle(Standard_Transient) const & entity)
{
    if (entity->IsKind(STANDARD_TYPE(StepShape_FaceSurface)))
        return HtmlLoggerEntry::Face;
    if (entity->IsKind(STANDARD_TYPE(StepShape_ManifoldSolidBrep)) ||
        entity->IsKind(STANDARD_TYPE(StepShape_ShellBasedSurfaceModel)))
        return HtmlLoggerEntry::Body;
    if (entity->IsKind(STANDARD_TYPE(StepShape_ConnectedFaceSet)))
        return HtmlLoggerEntry::Shell;
    if (entity->IsKind(STANDARD_TYPE(StepShape_FaceBound)) ||
        entity->IsKind(STANDARD_TYPE(StepShape_Loop)))
        return HtmlLoggerEntry::Loop;
    if (entity->IsKind(STANDARD_TYPE(StepShape_Edge)))
        return HtmlLoggerEntry::Edge;
    if (entity->IsKind(STANDARD_TYPE(StepShape_Vertex)))
        return HtmlLoggerEntry::Vertex;
    if (entity->IsKind(STANDARD_TYPE(StepGeom_Surface)))
        return HtmlLoggerEntry::Surface;
    if (entity->IsKind(STANDARD_TYPE(StepGeom_Curve)))
        return HtmlLoggerEntry::Curve;
    return HtmlLoggerEntry::Object;
}

/// `kindOf`, worked out once for each type: a file has few types and very many entities.
class KindsByType
{
public:
    Kind of(Handle(Standard_Transient) const & entity)
    {
        auto const [place, isNew] = m_Kinds.try_emplace(entity->DynamicType().get());
        if (isNew)
            place->second = kindOf(entity);
        return place->second;
    }

private:
    std::unordered_map<Standard_Type const *, Kind> m_Kinds;
};

/// What the kernel was asked to read and gave nothing for. Whether that is so.
bool gatherLoss(Handle(StepData_StepModel) const & model, Handle(Standard_Transient) const & entity,
                Kind kind, Handle(Transfer_TransientProcess) const & process, Coverage & coverage)
{
    auto const binder = process->Find(entity);
    bool const arrived = !binder.IsNull() && binder->HasResult();
    bool const failed = !binder.IsNull() && binder->Check()->HasFailed();
    bool const mustArrive = kind == HtmlLoggerEntry::Face || kind == HtmlLoggerEntry::Body;
    if (arrived || (!failed && !mustArrive))
        return false;
    coverage.lost(kind, textOf(model->StringLabel(entity)),
                  failed ? binder->Check()->CFail(1)
                         : "the kernel made nothing of it, or nothing in the file uses it");
    return true;
}

/// The numbers of the entities that the faces of the kernel were made from.
using FaceNumbers = std::unordered_map<TopoDS_TShape const *, int>;

void gatherFace(Handle(StepData_StepModel) const & model,
                Handle(StepShape_FaceSurface) const & face,
                Handle(Transfer_TransientProcess) const & process, FaceNumbers & numbers)
{
    TopoDS_Shape const shape = TransferBRep::ShapeResult(process, face);
    if (!shape.IsNull())
        numbers.emplace(shape.TShape().get(), model->IdentLabel(face));
}

/// Whether the kernel failed at something.
bool hasFailed(Transfer_TransientProcess const & process, Handle(Standard_Transient) const & entity)
{
    auto const binder = process.Find(entity);
    return !binder.IsNull() && binder->Check()->HasFailed();
}

/// Faces that arrived although one of their boundaries did not.
void gatherOpenFace(Handle(StepShape_FaceSurface) const & face,
                    Handle(Transfer_TransientProcess) const & process, Document & document)
{
    for (int i = 1; i <= face->NbBounds(); ++i) {
        auto const bound = face->BoundsValue(i);
        if (bound.IsNull() || (!hasFailed(*process, bound) && !hasFailed(*process, bound->Bound())))
            continue;
        TopoDS_Shape const shape = TransferBRep::ShapeResult(process, face);
        if (!shape.IsNull())
            document.openFaces.insert(shape.TShape().get());
    }
}

/// Entities that the kernel does not know, or could read in part alone. They count where nothing
/// else says that they did not arrive.
class UnreadEntities
{
public:
    UnreadEntities(StepData_StepModel const & model, Coverage & coverage)
        : m_Model(model), m_Coverage(coverage)
    {}

    void look(int number)
    {
        auto const entity = m_Model.Value(number);
        if (auto const unknown = Handle(StepData_UndefinedEntity)::DownCast(entity)) {
            ++m_Unknown[unknown->StepType()];
        } else if (m_Model.IsErrorEntity(number)) {
            std::string const type = entity->DynamicType()->Name();
            m_Coverage.changed(HtmlLoggerEntry::Object,
                               type.substr(type.find('_') + 1) + " read in part");
            m_Words.push_back(textOf(m_Model.StringLabel(entity)) + " was read in part: " +
                              m_Model.ReportEntity(number)->Check()->CFail(1));
        }
    }

    void tell(translator_kit::Run & run)
    {
        translator_kit::LimitedWarnings warnings(run);
        for (std::string const & words : m_Words)
            warnings.add(words + ".");
        warnings.end("entities that were read in part");
        translator_kit::LimitedWarnings unknown(run);
        for (auto const & [type, count] : m_Unknown)
            unknown.add("Open CASCADE does not know " + translator_kit::quoted(type) +
                        ", of which " + std::to_string(count) + " stand in the file.");
        unknown.end("kinds of entities that Open CASCADE does not know");
    }

private:
    StepData_StepModel const & m_Model;
    Coverage & m_Coverage;
    std::vector<std::string> m_Words;
    std::map<std::string, int> m_Unknown;
};

} // namespace

void gatherFacts(STEPControl_Reader & reader, Document & document, translator_kit::Run & run,
                 Coverage & coverage)
{
    auto const model = reader.StepModel();
    gatherHeader(model, document);
    auto const transfer = reader.WS()->TransferReader();
    auto const process = transfer->TransientProcess();
    auto const faces = std::make_shared<FaceNumbers>();
    KindsByType kinds;
    UnreadEntities unread(*model, coverage);
    for (int i = 1; i <= model->NbEntities(); ++i) {
        auto const entity = model->Value(i);
        if (!gatherLoss(model, entity, kinds.of(entity), process, coverage))
            unread.look(i);
        if (auto const face = Handle(StepShape_FaceSurface)::DownCast(entity)) {
            gatherFace(model, face, process, *faces);
            gatherOpenFace(face, process, document);
        }
        if (auto const definition = Handle(StepBasic_ProductDefinition)::DownCast(entity))
            gatherProduct(definition, process, document);
    }
    unread.tell(run);
    // The reader takes its model along when it goes.
    document.faceEntityOf = [faces](TopoDS_Shape const & face) {
        auto const found = faces->find(face.TShape().get());
        return found == faces->end() ? std::string() : "#" + std::to_string(found->second);
    };
    document.entityOf = [transfer, model](TopoDS_Shape const & shape) {
        auto const entity = transfer->EntityFromShapeResult(shape, 1);
        return entity.IsNull() ? std::string() : textOf(model->StringLabel(entity));
    };
}

} // namespace step
