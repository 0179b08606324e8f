#ifndef KELD_TRANSL_TOPOLOGY_PROXY_FACE_H
#define KELD_TRANSL_TOPOLOGY_PROXY_FACE_H

#include "model/carrier.h"
#include "topology/child_list.h"

#include <keld-transl/topology/face.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/surface.h>

#include <string>

namespace transl_tk {

class ProxyFace final : public Face, public Pooled<ProxyFace>
{
public:
    ProxyFace(int id, Surface * surface) : Face(id), m_Surface(surface, this) {}
    ProxyFace(ProxyFace const &) = delete;
    ProxyFace & operator=(ProxyFace const &) = delete;
    ~ProxyFace() override
    {
        m_Surface.release(this);
        m_Loops.destroy();
    }

    int getEntityKind() override { return EntityKindFace; }

    void addLoop(Loop * loop) override { m_Loops.add(loop); }
    void setSense(bool const & sense) override { m_Sense = sense; }
    Surface * getSurface() override { return m_Surface.get(); }
    bool getSense() override { return m_Sense; }
    char const * getLabel() override { return m_Label.c_str(); }
    void setLabel(char const * label) override { m_Label = label != nullptr ? label : ""; }
    bool forEachLoop(bool (*visit)(Loop *, void *), void * user) override
    {
        return m_Loops.forEach(visit, user);
    }

    std::string const & label() const { return m_Label; }
    ChildList<Loop, 2> const & loops() const { return m_Loops; }

    /// Id of the surface, -1 when there is none or it has died.
    int surfaceId() const { return m_Surface.livingId(); }

    /// Lets go of everything and frees nothing but itself.
    void destroyAlone()
    {
        m_Surface.leave(this);
        m_Surface = {};
        m_Loops.forget();
        delete this;
    }

private:
    std::string m_Label;
    ChildList<Loop, 2> m_Loops;
    CarrierLink<Surface, &SubPool::m_Surfaces> m_Surface;
    bool m_Sense = true;
};

} // namespace transl_tk

#endif
