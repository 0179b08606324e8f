#ifndef KELD_TRANSL_TOPOLOGY_PROXY_BODY_H
#define KELD_TRANSL_TOPOLOGY_PROXY_BODY_H

#include "model/entity.h"
#include "topology/child_list.h"

#include <keld-transl/topology/body.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/tri_strip.h>

#include <string>

namespace transl_tk {

class ProxyBody final : public Body, public Pooled<ProxyBody>
{
public:
    ProxyBody(int id, char const * name) : Body(id), m_Name(name != nullptr ? name : "") {}
    ProxyBody(ProxyBody const &) = delete;
    ProxyBody & operator=(ProxyBody const &) = delete;
    ~ProxyBody() override
    {
        m_Shells.destroy();
        m_Strips.destroy();
    }

    int getEntityKind() override { return EntityKindBody; }

    char const * getName() override { return m_Name.c_str(); }
    void setName(char const * name) override { m_Name = name != nullptr ? name : ""; }
    void addTriStrip(TriStrip * strip) override { m_Strips.add(strip); }
    void addShell(Shell * shell) override { m_Shells.add(shell); }
    bool forEachTriStrip(bool (*visit)(TriStrip *, void *), void * user) override
    {
        return m_Strips.forEach(visit, user);
    }
    bool forEachShell(bool (*visit)(Shell *, void *), void * user) override
    {
        return m_Shells.forEach(visit, user);
    }

    std::string const & name() const { return m_Name; }
    ChildList<Shell, 1> const & shells() const { return m_Shells; }
    ChildList<TriStrip, 1> const & strips() const { return m_Strips; }

    /// Frees nothing but itself.
    void destroyAlone()
    {
        m_Shells.forget();
        m_Strips.forget();
        delete this;
    }

private:
    std::string m_Name;
    ChildList<Shell, 1> m_Shells;
    ChildList<TriStrip, 1> m_Strips;
};

} // namespace transl_tk

#endif
