#ifndef KELD_TOOLS_PRODUCT_TREE_H
#define KELD_TOOLS_PRODUCT_TREE_H

#include <keld-transl/product/component.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace keld {

/// A node of the current model's product structure.
struct ProductNode
{
    transl_tk::Hierarchy * hierarchy = nullptr;
    std::size_t level = 0; ///< 0 at the top
};

/// All nodes, each in front of what it holds, in the order of the children. An assembly of id -1,
/// which stands above several tops, is left out, and its children are on top. Instances are not
/// followed to their components.
std::vector<ProductNode> productTree();

/// "part", "assembly" or "instance".
char const * typeName(transl_tk::Hierarchy & hierarchy);

/// The name to show for a node, as it came.
std::string shownName(transl_tk::Hierarchy & hierarchy);

/// The component that an instance places; null for any other node.
transl_tk::Component * placedComponent(transl_tk::Hierarchy & hierarchy);

/// A component's units in words, with the scale where it is not 1; empty for an instance.
std::string unitsText(transl_tk::Hierarchy & hierarchy);

/// What to print of the product structure.
struct TreeSettings
{
    std::size_t lines = 40; ///< nodes at most
    bool transforms = false;

    static constexpr std::size_t All = std::numeric_limits<std::size_t>::max();
};

/// Prints the product structure of the current model, a node a line, and how many nodes are not
/// printed; nothing for a model without.
void printProductTree(TreeSettings const & settings);

} // namespace keld

#endif
