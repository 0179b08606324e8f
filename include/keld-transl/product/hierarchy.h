#ifndef KELD_TRANSL_PRODUCT_HIERARCHY_H
#define KELD_TRANSL_PRODUCT_HIERARCHY_H

#include <keld-transl/model/base.h>

#include <vector>

namespace transl_tk {

class Assembly;

/// A node of the product structure: an assembly, a part or an instance. All of them share one store
/// and so one range of ids.
class KELD_TRANSL_EXPORT Hierarchy : public Base
{
protected:
    Hierarchy() = default;
    explicit Hierarchy(int const & id) : Base(id) {}
    ~Hierarchy() override;

public:
    /// What a node is. The numbers also stand in the model stream.
    enum Type : int { Part = 1, Assembly = 2, Instance = 3 };

    Hierarchy(Hierarchy const &) = default;
    Hierarchy & operator=(Hierarchy const &) = default;

    /// Frees a node of any type, with all that goes along: an assembly takes its children, a
    /// component its instances, a part its contents other than edges. A node leaves its assembly
    /// and its component. No depth of nesting overflows the stack.
    static void destruct(Hierarchy * hierarchy);

    /// Appends all nodes of the current sub-pool that have no parent to `out`, in order of ids. A
    /// part that is placed by instances alone counts among them, as does an instance that stands in
    /// no assembly.
    static void gatherTopLevelHierarchies(std::vector<Hierarchy *> & out);

    /// The one assembly above all others. Where several nodes, or one that is no assembly, are on
    /// top, it is made: with the id -1, an empty name for one node and "_" for several, and the
    /// nodes as children. It stays in the model, and an assembly of the id -1 that is there already
    /// takes the nodes. With one node, the new assembly has the length type of that part; of an
    /// instance, it takes the number 7.
    ///
    /// Null without a pool, in a model without nodes, and when the id -1 is a part's or instance's.
    static transl_tk::Assembly * getTopAssembly();

    /// The name to show: a component's own, an instance's component's. It stays owned by the
    /// component.
    static char const * name(Hierarchy * const hierarchy);

    int getEntityKind() override = 0;

    /// Copies the transform's sixteen doubles, which the toolkit passes on as they are and never
    /// multiplies. A new node has the identity.
    virtual void getTransform(double * transform) = 0;
    /// Copies sixteen doubles, bit for bit.
    virtual void setTransform(double const * transform) = 0;

    /// The assembly that took this node in last, null at first. It may have dropped the node, or be
    /// gone, since.
    virtual transl_tk::Assembly * getParent() = 0;
    /// Keeps the pointer and nothing else; `Assembly::addChild` is the way to move a node.
    virtual void setParent(transl_tk::Assembly * parent) = 0;

    virtual Type getHierarchyType() = 0;
};

} // namespace transl_tk

#endif
