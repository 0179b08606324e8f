#include "product_tree.h"

#include "numbers.h"
#include "safe_text.h"

#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/traverse_hierarchy.h>

#include <algorithm>
#include <cstdio>

namespace keld {

using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::Units;

namespace {

/// The assembly that the toolkit puts above several tops.
constexpr int IdOfMadeAssembly = -1;

/// Further levels are not indented, and are told by their number.
constexpr std::size_t DeepestIndent = 24;

constexpr double Identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

class TreeWalk
{
public:
    std::vector<ProductNode> nodes;

    void walk(Hierarchy * top)
    {
        transl_tk::TraverseHierarchy traversal;
        traversal.setPreActionCB([](Hierarchy * node, void * self) {
            static_cast<TreeWalk *>(self)->enter(node);
            return true;
        });
        traversal.setPostActionCB([](Hierarchy * node, void * self) {
            static_cast<TreeWalk *>(self)->leave(node);
            return true;
        });
        traversal.traverse(top, this);
        m_Level = 0;
    }

private:
    static bool isMade(Hierarchy * node)
    {
        return node->getId() == IdOfMadeAssembly &&
               node->getHierarchyType() == Hierarchy::Assembly && node->getParent() == nullptr;
    }

    void enter(Hierarchy * node)
    {
        if (!isMade(node))
            nodes.push_back({node, m_Level++});
    }

    void leave(Hierarchy * node)
    {
        if (!isMade(node))
            --m_Level;
    }

    std::size_t m_Level = 0;
};

char const * lengthName(Units::LengthType type)
{
    switch (type) {
    case Units::Millimetre:
        return "millimetres";
    case Units::Metre:
        return "metres";
    case Units::Inch:
        return "inches";
    case Units::Foot:
        return "feet";
    case Units::Mile:
        return "miles";
    case Units::Kilometre:
        return "kilometres";
    case Units::Micrometre:
        return "micrometres";
    case Units::Centimetre:
        return "centimetres";
    case Units::Micron:
        return "microns";
    case Units::Decimetre:
        return "decimetres";
    case Units::Yard:
        return "yards";
    case Units::Angstrom:
        return "angstroms";
    case Units::Nanometre:
        return "nanometres";
    default:
        return nullptr;
    }
}

void printTransform(Hierarchy & hierarchy, int indent)
{
    double transform[16];
    hierarchy.getTransform(transform);
    std::string words;
    if (std::equal(std::begin(transform), std::end(transform), Identity)) {
        words = " identity";
    } else {
        for (int i = 0; i < 16; ++i)
            words += (i % 4 == 0 && i > 0 ? "  " : " ") + numberText(transform[i]);
    }
    std::printf("%*stransform%s\n", indent, "", words.c_str());
}

void printNode(ProductNode const & node, TreeSettings const & settings)
{
    Hierarchy & hierarchy = *node.hierarchy;
    int const indent = static_cast<int>(4 + 2 * std::min(node.level, DeepestIndent));
    std::string line(static_cast<std::size_t>(indent), ' ');
    if (node.level > DeepestIndent)
        line += "[level " + std::to_string(node.level) + "] ";
    line += terminalText(shownName(hierarchy)) + " (" + typeName(hierarchy);
    if (Component * const placed = placedComponent(hierarchy))
        line += std::string(" of ") + typeName(*placed);
    std::string const units = unitsText(hierarchy);
    line += (units.empty() ? "" : ", " + units) + ")";
    std::puts(line.c_str());
    if (settings.transforms)
        printTransform(hierarchy, indent + 4);
}

} // namespace

std::vector<ProductNode> productTree()
{
    std::vector<Hierarchy *> tops;
    Hierarchy::gatherTopLevelHierarchies(tops);
    TreeWalk walk;
    for (Hierarchy * const top : tops)
        walk.walk(top);
    return std::move(walk.nodes);
}

char const * typeName(Hierarchy & hierarchy)
{
    switch (hierarchy.getHierarchyType()) {
    case Hierarchy::Part:
        return "part";
    case Hierarchy::Assembly:
        return "assembly";
    case Hierarchy::Instance:
        return "instance";
    }
    return "node";
}

std::string shownName(Hierarchy & hierarchy)
{
    char const * const name = Hierarchy::name(&hierarchy);
    return name != nullptr ? name : "";
}

Component * placedComponent(Hierarchy & hierarchy)
{
    if (hierarchy.getHierarchyType() != Hierarchy::Instance)
        return nullptr;
    return static_cast<transl_tk::Instance &>(hierarchy).getComponent();
}

std::string unitsText(Hierarchy & hierarchy)
{
    if (hierarchy.getHierarchyType() == Hierarchy::Instance)
        return {};
    Units & units = *static_cast<Component &>(hierarchy).getUnits();
    char const * const name = lengthName(units.getLengthType());
    std::string result =
        name != nullptr ? name : "length type " + std::to_string(units.getLengthType());
    if (units.getLengthScale() != 1)
        result += " x " + numberText(units.getLengthScale());
    return result;
}

void printProductTree(TreeSettings const & settings)
{
    std::vector<ProductNode> const nodes = productTree();
    if (nodes.empty())
        return;
    std::puts("  product tree");
    std::size_t const shown = std::min(settings.lines, nodes.size());
    for (std::size_t i = 0; i < shown; ++i)
        printNode(nodes[i], settings);
    if (shown < nodes.size())
        std::printf("    and %zu more; --whole-tree shows all\n", nodes.size() - shown);
}

} // namespace keld
