#ifndef KELD_TRANSL_METADATA_PRODUCT_ATTRIBUTES_H
#define KELD_TRANSL_METADATA_PRODUCT_ATTRIBUTES_H

#include <keld-transl/metadata/comment_attributes.h>
#include <keld-transl/metadata/hierarchy_info.h>
#include <keld-transl/product/hierarchy.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

struct TreeS_P;

namespace transl_tk {

class Attribute;

/// Product data of a model as text, for each assembly, part and instance.
///
/// Attributes know their entities and no entity its attributes, so all attributes of the model are
/// gone through first, with `createHierarchyAtrrsMap`. They must live as long as they are asked
/// for.
///
/// A copy shares the lists of attributes of the items that were known when it was made; the last of
/// them frees the lists. One thread at a time.
class KELD_TRANSL_EXPORT ProductAttributes
{
public:
    /// Files an attribute of type 2 under the assemblies, parts and instances that it hangs on, and
    /// one of type 7 as a comment of all its entities. Others, and null, are passed over.
    static void createHierarchyAtrrsMap(Attribute * const attribute,
                                        ProductAttributes * attributes);

    /// The callback of that walk: files the attribute under `entity` if that is an assembly, part
    /// or instance. `pair` points at a `std::pair<ProductAttributes *, Attribute *>`. Returns true.
    static bool insertHierarchyAttribute(Base * const entity, void * pair);

    /// Makes a tree of texts (keld-common/text_tree.h) from the attributes of `hierarchy`, which
    /// the caller frees with `FreeTreeS_P`; its keys do not heed the case of letters. A value
    /// stands under "CAD/" and the attribute's name; the last of several is the one that stays. The
    /// comments stand under "CAD/Comment". Values read as in `CommentAttributes::setComment`.
    ///
    /// Null when no attribute of type 2 hangs on `hierarchy`. A std::bad_alloc when the tree cannot
    /// be made.
    TreeS_P * calcHierarchyAttributes(Hierarchy * const hierarchy);

    /// Fills in what is known about `hierarchy` and returns its type. Fields that do not apply stay
    /// as they are: give a fresh `info`.
    ///
    /// Every item gets a running number at its first visit, from "1" on. `parentKey` is set when
    /// the parent was visited before; that of an instance is "1" otherwise.
    Hierarchy::Type gatherVPMData(Hierarchy * const hierarchy, HierarchyInfo & info);

private:
    std::unordered_map<Hierarchy *, std::string> m_VPMKeys;
    std::unordered_map<Hierarchy *, std::shared_ptr<std::vector<Attribute *>>>
        m_HierarchyAttributes;
    CommentAttributes m_Comments;
};

} // namespace transl_tk

#endif
