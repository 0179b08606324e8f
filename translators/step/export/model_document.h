#ifndef KELD_STEP_EXPORT_MODEL_DOCUMENT_H
#define KELD_STEP_EXPORT_MODEL_DOCUMENT_H

#include "coverage.h"
#include "export/model_facts.h"
#include "export/shape_builder.h"

#include <TDF_Label.hxx>
#include <TDocStd_Document.hxx>
#include <array>
#include <gp_Mat.hxx>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace transl_tk {
class Assembly;
class Component;
class Hierarchy;
class Part;
} // namespace transl_tk

namespace translator_kit {
class Run;
}

namespace step {

struct LooseEntities;

/// A product of a document that is to be written.
struct OutgoingProduct
{
    TDF_Label label;
    std::string id;
    std::string name;
    std::string description;
};

/// A document of the kernel with all that a model holds and such a document can take. What it
/// cannot take is counted as lost.
///
/// A component that is placed mirrored or at another size becomes a product of its own for each
/// size, since the kernel's places only move and turn.
class ModelDocument
{
public:
    /// `fallbackName` is for what belongs to no product, and for products without a name.
    /// `unit` is the file's unit of length, in millimetres.
    ModelDocument(transl_tk::SubPool & model, std::string fallbackName, double unit,
                  Coverage & coverage);

    /// Fills the document. Progress of the run ends at 40 percent.
    void build(translator_kit::Run & run);

    Handle(TDocStd_Document) const & content() const { return m_Content; }
    std::vector<OutgoingProduct> const & products() const { return m_Products; }
    ModelFacts const & facts() const { return m_Facts; }

    /// Solids, shells and faces that have names.
    std::vector<std::pair<TopoDS_Shape, std::string>> const & names() const { return m_Names; }

private:
    using Key = std::pair<transl_tk::Component *, std::array<long long, 9>>;

    void addTop(transl_tk::Hierarchy & node);
    TDF_Label definitionOf(transl_tk::Component & component, gp_Mat const & rest);
    void fillPart(transl_tk::Part & part, gp_Mat const & rest, TDF_Label const & label);
    void addSubShapes(transl_tk::Part & part, TDF_Label const & label,
                      std::map<transl_tk::Base const *, TopoDS_Shape> const & changed);
    void addChildren(transl_tk::Assembly & assembly, gp_Mat const & rest, TDF_Label const & label);
    void place(transl_tk::Hierarchy & node, gp_Mat const & above, TDF_Label const & label);
    void addLoose(LooseEntities const & loose);
    TDF_Label addProduct(TDF_Label const & label, OutgoingProduct product);
    OutgoingProduct productOf(transl_tk::Component & component) const;

    transl_tk::SubPool & m_Model;
    std::string m_FallbackName;
    Coverage & m_Coverage;
    ShapeBuilder m_Shapes;
    ModelFacts m_Facts;
    Handle(TDocStd_Document) m_Content;
    translator_kit::Run * m_Run = nullptr;
    std::map<Key, TDF_Label> m_Definitions;
    std::map<transl_tk::Part *, TopoDS_Shape> m_PartShapes;
    std::set<transl_tk::Component *> m_Open; ///< those whose children are being added
    std::set<transl_tk::Component *> m_Reached;
    std::vector<std::pair<transl_tk::Hierarchy *, TDF_Label>> m_Places;
    std::vector<OutgoingProduct> m_Products;
    std::vector<std::pair<TopoDS_Shape, std::string>> m_Names;
};

} // namespace step

#endif
