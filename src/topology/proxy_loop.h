#ifndef KELD_TRANSL_TOPOLOGY_PROXY_LOOP_H
#define KELD_TRANSL_TOPOLOGY_PROXY_LOOP_H

#include "model/entity.h"
#include "topology/child_list.h"

#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>

namespace transl_tk {

class ProxyLoop final : public Loop, public Pooled<ProxyLoop>
{
public:
    explicit ProxyLoop(int id) : Loop(id) {}
    ProxyLoop(ProxyLoop const &) = delete;
    ProxyLoop & operator=(ProxyLoop const &) = delete;
    ~ProxyLoop() override { m_Fins.destroy(); }

    int getEntityKind() override { return EntityKindLoop; }

    void addFin(Fin * fin) override { m_Fins.add(fin); }
    bool forEachFin(bool (*visit)(Fin *, void *), void * user) override
    {
        return m_Fins.forEach(visit, user);
    }

    ChildList<Fin, 4> const & fins() const { return m_Fins; }

    /// Frees nothing but itself.
    void destroyAlone()
    {
        m_Fins.forget();
        delete this;
    }

private:
    ChildList<Fin, 4> m_Fins;
};

} // namespace transl_tk

#endif
