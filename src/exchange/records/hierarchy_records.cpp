#include "exchange/records/hierarchy_records.h"

#include "exchange/records/links.h"

#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/product/units.h>

#include <memory>

namespace transl_tk {

namespace {

using OwnedUnits = geom::Owned<Units>;

OwnedUnits readUnits(StreamReader & reader)
{
    int lengthType = 0;
    double lengthScale = 0.0;
    int angularType = 0;
    double angularScale = 0.0;
    reader.i32(lengthType);
    reader.f64(lengthScale);
    reader.i32(angularType);
    reader.f64(angularScale);
    return OwnedUnits(Units::create(static_cast<Units::LengthType>(lengthType),
                                    static_cast<Units::AngularType>(angularType), lengthScale,
                                    angularScale));
}

/// A node whose transform is not in the stream keeps the one that it was made with.
void readTransform(StreamReader & reader, Hierarchy & hierarchy)
{
    bool identity = false;
    reader.u8(identity);
    if (identity)
        return;
    double matrix[16];
    reader.f64(matrix);
    hierarchy.setTransform(matrix);
}

/// Reads one of a part's lists, and hands what the model has of it to `add`. The part owns it from
/// then on, edges apart.
template <class Entity>
void readListed(StreamReader & reader, Part & part, void (Part::*add)(Entity *))
{
    for (std::size_t left = reader.count(4); left != 0; --left) {
        int id = 0;
        reader.i32(id);
        Entity * const entity = lookUp<Entity>(reader.session().subPool(), id);
        if (entity == nullptr)
            continue;
        if constexpr (!std::is_same_v<Entity, Edge>)
            takeOwnership<Entity>(reader, id);
        (part.*add)(entity);
    }
}

} // namespace

void AssembliesContent::read(StreamReader & reader, ReadSession & session)
{
    constexpr std::size_t LeastSize = 45;
    std::string name;
    std::string labels[2];
    for (std::size_t left = reader.count(LeastSize); left != 0; --left) {
        reader.beginRecord();
        int id = 0;
        reader.i32(id);
        reader.string(name);
        for (std::string & label : labels)
            reader.string(label);
        OwnedUnits units = readUnits(reader);
        Assembly & assembly =
            made<AssembliesContent>(reader, Assembly::create(id, name.c_str()), id);
        assembly.setFirstLabel(labels[0].c_str());
        assembly.setSecondLabel(labels[1].c_str());
        assembly.setUnits(units.release());
        readTransform(reader, assembly);
        std::vector<int> & children = session.childrenOf(assembly);
        children.resize(reader.count(4));
        for (int & child : children)
            reader.i32(child);
    }
}

void PartsContent::read(StreamReader & reader, ReadSession &)
{
    constexpr std::size_t LeastSize = 81;
    std::string name;
    std::string labels[3];
    for (std::size_t left = reader.count(LeastSize); left != 0; --left) {
        reader.beginRecord();
        int id = 0;
        reader.i32(id);
        reader.string(name);
        for (std::string & label : labels)
            reader.string(label);
        Part & part = made<PartsContent>(reader, Part::create(id, name.c_str()), id);
        OwnedUnits units = readUnits(reader);
        readNodes(reader, *part.getNodeTree());
        part.setFirstLabel(labels[0].c_str());
        part.setSecondLabel(labels[1].c_str());
        part.setUnits(units.release());
        part.setPartLabel(labels[2].c_str());
        readTransform(reader, part);
        readListed(reader, part, &Part::addBody);
        readListed(reader, part, &Part::addPoint);
        readListed(reader, part, &Part::addSpotWeld);
        readListed(reader, part, &Part::addCartesianCoord);
        readListed(reader, part, &Part::addTriStrip);
        readListed(reader, part, &Part::addCurve);
        readListed(reader, part, &Part::addEdge);
        readListed(reader, part, &Part::addAnnotation);
    }
}

void InstancesContent::read(StreamReader & reader, ReadSession & session)
{
    constexpr std::size_t LeastSize = 9;
    for (std::size_t left = reader.count(LeastSize); left != 0; --left) {
        reader.beginRecord();
        int id = 0;
        int componentId = 0;
        reader.i32(id);
        reader.i32(componentId);
        auto * const hierarchy = lookUp<Hierarchy>(session.subPool(), componentId);
        if (hierarchy == nullptr || hierarchy->getHierarchyType() == Hierarchy::Instance)
            reader.fail("the instance " + std::to_string(id) + " places the component " +
                        std::to_string(componentId) + ", which is not there");
        Instance & instance = made<InstancesContent>(
            reader, Instance::create(id, static_cast<Component *>(hierarchy)), id);
        readTransform(reader, instance);
    }
}

} // namespace transl_tk
