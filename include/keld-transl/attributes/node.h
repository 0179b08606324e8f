#ifndef KELD_TRANSL_ATTRIBUTES_NODE_H
#define KELD_TRANSL_ATTRIBUTES_NODE_H

#include <keld-transl/attributes/value.h>

namespace transl_tk {

class Base;

/// A node of a parameter tree: a `Branch` or a `Leaf`, made by these two alone.
///
/// A node may hang under several parents, and more than once under one. It goes with the last that
/// holds it; one that hangs nowhere is freed with `destruct`. A branch must not hang below itself:
/// such a ring keeps itself alive when its parents let go. Nodes belong to one thread at a time.
class KELD_TRANSL_EXPORT Node
{
protected:
    Node() = default;

public:
    Node(Node const &) = delete;
    Node & operator=(Node const &) = delete;

    /// Frees the node and lets go of its children, even when parents still hold it: those must not
    /// be walked or freed any more. Null is no fault.
    static void destruct(Node * node);

    /// The number that the node was made with, by which the model stream tells nodes of one tree
    /// apart.
    virtual int getId() const = 0;

    /// 1 for a `Branch`, 2 for a `Leaf`.
    virtual int getType() const = 0;

    /// Adds a property under a copy of `name`, which must not be null, and adopts `value`, which
    /// may be null. When the name is there already nothing changes, and `value` stays with the
    /// caller.
    virtual void addProperty(char const * name, IValue * value) = 0;

    /// Calls `callback` for each property, in no order to rely on. Stops at the first false and
    /// returns false; otherwise true. The values stay owned by the node.
    virtual bool forEachProperty(bool (*callback)(char const * name, IValue * value, void * user),
                                 void * user) = 0;

    /// Appends `entity`, which must live; null adds nothing. It stays owned by the model.
    virtual void addEntity(Base * entity) = 0;

    /// Calls `callback` for each entity in order of adding. Stops at the first false and returns
    /// false; otherwise true. Entities that have died since, and those that the current sub-pool
    /// does not list, are passed over.
    virtual bool forEachEntity(bool (*callback)(Base * entity, void * user), void * user) = 0;

protected:
    virtual ~Node() = default;
};

} // namespace transl_tk

#endif
