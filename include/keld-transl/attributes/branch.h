#ifndef KELD_TRANSL_ATTRIBUTES_BRANCH_H
#define KELD_TRANSL_ATTRIBUTES_BRANCH_H

#include <keld-transl/attributes/node.h>

namespace transl_tk {

/// A node of a parameter tree that has a name, a tag and children.
class KELD_TRANSL_EXPORT Branch : public Node
{
protected:
    Branch() = default;
    ~Branch() override = default;

public:
    /// What a branch stands for. Translators define the numbers; each passes through unchanged.
    enum Tag : int {};

    Branch(Branch const &) = delete;
    Branch & operator=(Branch const &) = delete;

    /// Makes a branch without children that hangs nowhere. `name` is copied and must not be null.
    static Branch * create(int const & id, char const * name, Tag const & tag);

    virtual Tag getTag() const = 0;

    /// Copies `name`, which must not be null.
    virtual void setName(char const * name) = 0;
    virtual char const * getName() const = 0;

    /// Hangs `node` under this branch, behind its other children; null adds nothing.
    virtual void addNode(Node * node) = 0;

    /// Calls `callback` for each child in order of adding. Stops at the first false and returns
    /// false; otherwise true.
    virtual bool forEachNode(bool (*callback)(Node * node, void * user), void * user) = 0;
};

} // namespace transl_tk

#endif
