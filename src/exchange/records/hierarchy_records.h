#ifndef KELD_TRANSL_EXCHANGE_RECORDS_HIERARCHY_RECORDS_H
#define KELD_TRANSL_EXCHANGE_RECORDS_HIERARCHY_RECORDS_H

#include "exchange/records/node_record.h"
#include "exchange/section.h"
#include "product/proxy_assembly.h"
#include "product/proxy_instance.h"
#include "product/proxy_part.h"

namespace transl_tk {

/// Puts the units of a component. The angular type is not among them: the length type stands in
/// its place a second time, and becomes the angular type of the reader's units.
template <class Sink> void putUnits(Sink & sink, Units & units)
{
    sink.i32(units.getLengthType());
    sink.f64(units.getLengthScale());
    sink.i32(units.getLengthType());
    sink.f64(units.getAngularScale());
}

/// Puts whether the transform equals the identity, and its sixteen numbers when it does not.
template <class Sink, class Proxy> void putTransform(Sink & sink, Proxy & hierarchy)
{
    bool const identity = hierarchy.hasIdentity();
    sink.u8(identity);
    if (identity)
        return;
    double matrix[16];
    hierarchy.getTransform(matrix);
    sink.f64(matrix);
}

/// The assemblies: id, name, two labels, units, transform, and the ids of the children, counted.
struct AssembliesContent
{
    using Entity = Assembly;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Hierarchies;

    template <class Sink> static void put(Sink & sink, ModelContent const & model)
    {
        sink.count(model.assemblies.size());
        for (Assembly * const entity : model.assemblies) {
            auto & assembly = static_cast<ProxyAssembly &>(*entity);
            sink.i32(assembly.getId());
            sink.string(assembly.getName());
            sink.string(assembly.getFirstLabel());
            sink.string(assembly.getSecondLabel());
            putUnits(sink, *assembly.getUnits());
            putTransform(sink, assembly);
            std::size_t children = 0;
            assembly.children().visitByNumber([&](HierarchyRef const &) { ++children; });
            sink.count(children);
            if constexpr (Sink::CountsOnly)
                sink.records(children, 4);
            else
                assembly.children().visitByNumber(
                    [&](HierarchyRef const & child) { sink.i32(child.id); });
        }
    }

    /// Notes the children, which stand further on in the stream, for `ReadSession::commit`.
    static void read(StreamReader & reader, ReadSession & session);
};

/// The parts: id, name, three labels, units, parameter tree, transform, and eight lists of ids,
/// each counted.
struct PartsContent
{
    using Entity = Part;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Hierarchies;

    template <class Sink> static void put(Sink & sink, ModelContent const & model)
    {
        sink.count(model.parts.size());
        for (Part * const entity : model.parts) {
            auto & part = static_cast<ProxyPart &>(*entity);
            sink.i32(part.getId());
            sink.string(part.getName());
            sink.string(part.getFirstLabel());
            sink.string(part.getSecondLabel());
            sink.string(part.getPartLabel());
            putUnits(sink, *part.getUnits());
            NodeWriter(sink).put(part.getNodeTree());
            putTransform(sink, part);
            putListed(sink, part.m_Bodies, &SubPool::m_Bodies);
            putListed(sink, part.m_Points, &SubPool::m_Points);
            putListed(sink, part.m_SpotWelds, &SubPool::m_SpotWelds);
            putListed(sink, part.m_CartesianCoords, &SubPool::m_CartesianCoords);
            putListed(sink, part.m_TriStrips, &SubPool::m_TriStrips);
            putListed(sink, part.m_Curves, &SubPool::m_Curves3D);
            putListed(sink, part.m_Edges, &SubPool::m_Edges);
            putListed(sink, part.m_Annotations, &SubPool::m_Annotations);
        }
    }

    static void read(StreamReader & reader, ReadSession & session);
    static void undo(Base * entity) { static_cast<ProxyPart *>(entity)->destroyAlone(); }

private:
    template <class Sink, class Contents>
    static void putListed(Sink & sink, Contents const & contents, EntityStore SubPool::*store)
    {
        std::size_t living = 0;
        contents.forEachLivingId(store, [&](int) { ++living; });
        sink.count(living);
        if constexpr (Sink::CountsOnly)
            sink.records(living, 4);
        else
            contents.forEachLivingId(store, [&](int id) { sink.i32(id); });
    }
};

/// The instances: id, the component's id, transform.
struct InstancesContent
{
    using Entity = Instance;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Hierarchies;

    template <class Sink> static void put(Sink & sink, ModelContent const & model)
    {
        sink.count(model.instances.size());
        for (Instance * const entity : model.instances) {
            auto & instance = static_cast<ProxyInstance &>(*entity);
            sink.i32(instance.getId());
            sink.i32(instance.componentId());
            putTransform(sink, instance);
        }
    }

    static void read(StreamReader & reader, ReadSession & session);
};

} // namespace transl_tk

#endif
