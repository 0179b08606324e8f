#ifndef KELD_STEP_IMPORT_LABEL_ENTITIES_H
#define KELD_STEP_IMPORT_LABEL_ENTITIES_H

#include <NCollection_DataMap.hxx>
#include <TDF_Label.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <vector>

namespace transl_tk {
class Base;
class Part;
} // namespace transl_tk

namespace step {

/// What became of a label of a document: its entities, and the part that they belong to, if any.
struct LabelEntities
{
    std::vector<transl_tk::Base *> entities;
    transl_tk::Part * part = nullptr;
};

using EntitiesByLabel = NCollection_DataMap<TDF_Label, LabelEntities, TDF_LabelMapHasher>;

} // namespace step

#endif
