#ifndef KELD_TRANSL_TOPOLOGY_PROXY_SHELL_H
#define KELD_TRANSL_TOPOLOGY_PROXY_SHELL_H

#include "model/entity.h"
#include "topology/child_list.h"

#include <keld-transl/topology/face.h>
#include <keld-transl/topology/shell.h>

namespace transl_tk {

class ProxyShell final : public Shell, public Pooled<ProxyShell>
{
public:
    explicit ProxyShell(int id) : Shell(id) {}
    ProxyShell(ProxyShell const &) = delete;
    ProxyShell & operator=(ProxyShell const &) = delete;
    ~ProxyShell() override { m_Faces.destroy(); }

    int getEntityKind() override { return EntityKindShell; }

    void addFace(Face * face) override { m_Faces.add(face); }
    bool getShellFlag() override { return m_Flag; }
    void setShellFlag(bool const & flag) override { m_Flag = flag; }
    bool forEachFace(bool (*visit)(Face *, void *), void * user) override
    {
        return m_Faces.forEach(visit, user);
    }

    ChildList<Face, 2> const & faces() const { return m_Faces; }

    /// Frees nothing but itself.
    void destroyAlone()
    {
        m_Faces.forget();
        delete this;
    }

private:
    bool m_Flag = false;
    ChildList<Face, 2> m_Faces;
};

} // namespace transl_tk

#endif
