#include "metadata/value_text.h"

#include <keld-common/text_tree.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/metadata/product_attributes.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>

#include <cstdlib>
#include <cstring>
#include <locale>
#include <new>
#include <sstream>
#include <utility>

namespace transl_tk {

namespace {

using Filing = std::pair<ProductAttributes *, Attribute *>;

/// A tree that is freed unless it is handed out.
class NewTree
{
public:
    NewTree() : m_Tree(NewTreeS_P(str_case_cmp, ::strdup, std::free), FreeTreeS_P)
    {
        if (m_Tree == nullptr)
            throw std::bad_alloc();
    }

    void set(std::string const & key, std::string const & text)
    {
        char * const copy = ::strdup(text.c_str());
        if (SetNodeDataS_P(m_Tree.get(), key.c_str(), copy, 0) == 0) {
            std::free(copy);
            throw std::bad_alloc();
        }
    }

    TreeS_P * release() { return m_Tree.release(); }

private:
    std::unique_ptr<TreeS_P, decltype(&FreeTreeS_P)> m_Tree;
};

void describe(Component & component, HierarchyInfo & info)
{
    info.firstLabel = component.getFirstLabel();
    info.secondLabel = component.getSecondLabel();
    info.name = component.getName();
}

} // namespace

void ProductAttributes::createHierarchyAtrrsMap(Attribute * const attribute,
                                                ProductAttributes * attributes)
{
    if (attribute == nullptr || attributes == nullptr)
        return;
    if (attribute->getType() != Attribute::Product) {
        CommentAttributes::setComment(attribute, &attributes->m_Comments);
        return;
    }
    Filing filing(attributes, attribute);
    attribute->forEachEntity(insertHierarchyAttribute, &filing);
}

bool ProductAttributes::insertHierarchyAttribute(Base * const entity, void * pair)
{
    if (entity->getEntityKind() != EntityKindHierarchy)
        return true;
    auto const [attributes, attribute] = *static_cast<Filing *>(pair);
    auto & filed = attributes->m_HierarchyAttributes[static_cast<Hierarchy *>(entity)];
    if (filed == nullptr)
        filed = std::make_shared<std::vector<Attribute *>>();
    filed->push_back(attribute);
    return true;
}

TreeS_P * ProductAttributes::calcHierarchyAttributes(Hierarchy * const hierarchy)
{
    auto const found = m_HierarchyAttributes.find(hierarchy);
    if (found == m_HierarchyAttributes.end())
        return nullptr;
    NewTree tree;
    std::ostringstream text;
    text.imbue(std::locale::classic());
    for (Attribute * const attribute : *found->second) {
        std::string const key = std::string("CAD/") + attribute->getName();
        for (int i = 0; i < attribute->getNumValues(); ++i) {
            text.str({});
            writeValue(text, attribute->getValue(i));
            tree.set(key, text.str());
        }
    }
    if (std::string const comment = m_Comments.getComment(hierarchy); !comment.empty())
        tree.set("CAD/Comment", comment);
    return tree.release();
}

Hierarchy::Type ProductAttributes::gatherVPMData(Hierarchy * const hierarchy, HierarchyInfo & info)
{
    auto const [entry, isNew] = m_VPMKeys.try_emplace(hierarchy);
    if (isNew)
        entry->second = std::to_string(m_VPMKeys.size());
    Hierarchy * const parent = hierarchy->getParent();
    if (auto const visited = m_VPMKeys.find(parent); visited != m_VPMKeys.end())
        info.parentKey = visited->second;
    hierarchy->getTransform(info.transform);
    info.id = std::to_string(hierarchy->getId());

    Hierarchy::Type const type = hierarchy->getHierarchyType();
    switch (type) {
    case Hierarchy::Part:
        info.partLabel = static_cast<transl_tk::Part *>(hierarchy)->getPartLabel();
        [[fallthrough]];
    case Hierarchy::Assembly:
        describe(*static_cast<Component *>(hierarchy), info);
        info.key = entry->second;
        break;
    case Hierarchy::Instance:
        if (info.parentKey.empty())
            info.parentKey = "1";
        info.key =
            std::to_string(static_cast<transl_tk::Instance *>(hierarchy)->getComponent()->getId());
        break;
    }
    return type;
}

} // namespace transl_tk
