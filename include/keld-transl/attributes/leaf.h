#ifndef KELD_TRANSL_ATTRIBUTES_LEAF_H
#define KELD_TRANSL_ATTRIBUTES_LEAF_H

#include <keld-transl/attributes/node.h>

namespace transl_tk {

class Parameter;

/// A node of a parameter tree that holds parameters.
class KELD_TRANSL_EXPORT Leaf : public Node
{
protected:
    Leaf() = default;
    ~Leaf() override = default;

public:
    Leaf(Leaf const &) = delete;
    Leaf & operator=(Leaf const &) = delete;

    /// Makes a leaf without parameters that hangs nowhere.
    static Leaf * create(int const & id);

    /// Appends `parameter` and adopts it; null adds nothing.
    virtual void addParameter(Parameter * parameter) = 0;

    /// Calls `callback` for each parameter in order of adding. Stops at the first false and returns
    /// false; otherwise true.
    virtual bool forEachParameter(bool (*callback)(Parameter * parameter, void * user),
                                  void * user) = 0;
};

} // namespace transl_tk

#endif
