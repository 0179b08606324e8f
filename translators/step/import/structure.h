#ifndef KELD_STEP_IMPORT_STRUCTURE_H
#define KELD_STEP_IMPORT_STRUCTURE_H

#include "attribute_book.h"
#include "coverage.h"
#include "import/document.h"
#include "import/facets.h"
#include "import/label_entities.h"
#include "import/occurrences.h"

#include <NCollection_DataMap.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <TDF_LabelSequence.hxx>
#include <string>
#include <vector>

namespace transl_tk {
class Assembly;
class Base;
class Component;
class Part;
} // namespace transl_tk

namespace translator_kit {
class Run;
}

namespace step {

class Topology;

/// Moves the products of a document into the model: an assembly or a part for each definition, an
/// instance for each place where one stands, and the shapes of the parts.
class Structure
{
public:
    /// `fallbackName` is for products without a name of their own.
    Structure(Document const & document, std::string fallbackName, FacetSettings const & facets,
              Coverage & coverage)
        : m_Document(document), m_FallbackName(std::move(fallbackName)), m_Facets(facets),
          m_Coverage(coverage)
    {}

    /// Fills the current sub-pool. Progress of the run ends at 90 percent.
    void build(translator_kit::Run & run);

private:
    transl_tk::Component * componentFor(TDF_Label const & definition);
    void addChildren(TDF_Label const & definition, transl_tk::Assembly & assembly);
    /// Progress of the run goes from one percentage to another.
    void fillPart(TDF_Label const & definition, transl_tk::Part & part, translator_kit::Run & run,
                  int start, int end);
    void addSubShapeFacts(TDF_Label const & definition, transl_tk::Part & part,
                          Topology const & topology);
    void addTolerances(Topology const & topology);
    void addProducts();
    void addHeader(std::vector<transl_tk::Base *> const & tops);

    Document const & m_Document;
    std::string m_FallbackName;
    FacetSettings const & m_Facets;
    Coverage & m_Coverage;
    EntitiesByLabel m_Entities;
    InstancesByPlace m_Instances;
    AttributeBook m_Attributes;
    NCollection_DataMap<TDF_Label, transl_tk::Component *, TDF_LabelMapHasher> m_Components;
    std::vector<std::pair<TDF_Label, transl_tk::Assembly *>> m_OpenAssemblies;
    std::vector<std::pair<TDF_Label, transl_tk::Part *>> m_OpenParts;
};

} // namespace step

#endif
