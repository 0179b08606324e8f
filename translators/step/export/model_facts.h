#ifndef KELD_STEP_EXPORT_MODEL_FACTS_H
#define KELD_STEP_EXPORT_MODEL_FACTS_H

#include "coverage.h"

#include <TDF_Label.hxx>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace transl_tk {
class Attribute;
class Base;
class SubPool;
} // namespace transl_tk

namespace step {

/// The attributes of a model by their entities, on their way into a document: the reverse of
/// `addFacts`.
class ModelFacts
{
public:
    /// `unit` is the file's unit of length, in millimetres.
    ModelFacts(transl_tk::SubPool & model, double unit);

    /// Whether `entity` has a colour, a layer, a material or a property.
    bool hasFacts(transl_tk::Base const & entity) const;

    /// Whether any edge has.
    bool hasFactsOfEdges() const { return m_HasFactsOfEdges; }

    /// Gives a label the colours, layers, materials and properties of `entity`.
    void put(transl_tk::Base const & entity, TDF_Label const & label, Coverage & coverage);

    /// The first text of the attribute of that number and name that hangs on `entity`, or empty.
    std::string text(transl_tk::Base const & entity, int number, std::string const & name) const;

    /// The texts that hang on any entity, by the names of their attributes.
    std::vector<std::pair<std::string, std::string>> texts(int number) const;

    /// Counts as lost what a document has no place for, and what was put nowhere.
    void countLost(Coverage & coverage) const;

private:
    using Attributes = std::vector<transl_tk::Attribute *>;

    Attributes const & of(transl_tk::Base const & entity) const;
    bool putProperty(transl_tk::Attribute const & attribute, TDF_Label const & label) const;
    void countMissed(transl_tk::Attribute & attribute, Coverage & coverage) const;

    double m_Unit;
    bool m_HasFactsOfEdges = false;
    Attributes m_All;
    std::unordered_map<transl_tk::Base const *, Attributes> m_ByEntity;
    std::unordered_set<transl_tk::Base const *> m_Put;
};

} // namespace step

#endif
