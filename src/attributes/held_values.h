#ifndef KELD_TRANSL_ATTRIBUTES_HELD_VALUES_H
#define KELD_TRANSL_ATTRIBUTES_HELD_VALUES_H

#include "model/small_list.h"

#include <keld-transl/attributes/value.h>

namespace transl_tk {

/// Values in order of adding, owned. A null pointer is one of them like any other.
class HeldValues
{
public:
    HeldValues() = default;
    HeldValues(HeldValues const &) = delete;
    HeldValues & operator=(HeldValues const &) = delete;
    ~HeldValues()
    {
        for (IValue * const value : m_Values)
            IValue::destruct(value);
    }

    int size() const noexcept { return static_cast<int>(m_Values.size()); }
    IValue * at(int index) const noexcept { return m_Values[static_cast<std::size_t>(index)]; }

    void adopt(IValue * value) { m_Values.add(value); }

    /// Appends a new value of that content.
    template <class Content> void make(Content const & content)
    {
        m_Values.makeRoom();
        m_Values.add(IValue::create(content));
    }

private:
    SmallList<IValue *, 3> m_Values;
};

} // namespace transl_tk

#endif
