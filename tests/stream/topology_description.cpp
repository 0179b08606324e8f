#include "stream/topology_description.h"

#include "stream/topology_stream.h"

namespace tests {

using namespace transl_tk;

namespace {

/// The id of an entity that stands in the store, which is not asked itself: it may be dead.
int idIn(EntityStore SubPool::*store, Base const * entity)
{
    int found = -1;
    if (entity != nullptr)
        (currentSubPool().*store).m_Entities.forEach([&](int id, Base * standing) {
            if (standing == entity)
                found = id;
        });
    return found;
}

template <class Entity, class Visit> void forEach(EntityStore SubPool::*store, Visit const & visit)
{
    (currentSubPool().*store).m_Entities.forEach([&](int id, Base * entity) {
        visit(id, *static_cast<Entity *>(entity));
    });
}

/// The elements of an array that may be absent, under a count that may be negative.
template <class Element, class Value>
std::vector<Element> listOf(Value const * values, int count, int width)
{
    std::vector<Element> list;
    if (values == nullptr)
        return list;
    for (int i = 0; i < width * std::max(count, 0); ++i)
        list.push_back(std::bit_cast<Element>(values[i]));
    return list;
}

ModelDescription::Strip describe(TriStrip & strip)
{
    float * vertices = nullptr;
    unsigned char * colours = nullptr;
    int vertexCount = 0;
    float * normals = nullptr;
    int normalCount = 0;
    int * indices = nullptr;
    int indexCount = 0;
    strip.getData(vertices, colours, vertexCount, normals, normalCount, indices, indexCount);
    return {strip.getStripFlag(), listOf<std::uint32_t>(vertices, vertexCount, 3),
            listOf<unsigned char>(colours, vertexCount, 3),
            listOf<std::uint32_t>(normals, normalCount, 3), listOf<int>(indices, indexCount, 1)};
}

ModelDescription::Vertex describe(Vertex & vertex)
{
    geom::Point * point = nullptr;
    Triple values{};
    vertex.getGeometry(point, values[0]);
    if (point == nullptr)
        return {bitsOf(std::vector{values[0]})};
    point->getCoordinates(values[0], values[1], values[2]);
    return {bitsOf(values)};
}

std::vector<std::string> namesOf(SpotWeld & weld)
{
    std::vector<std::string> names;
    weld.forEachWeldName(
        [](char const * name, void * list) {
            static_cast<std::vector<std::string> *>(list)->emplace_back(name);
            return true;
        },
        &names);
    return names;
}

} // namespace

ModelDescription descriptionOfModel()
{
    ModelDescription model;
    model.shapes = shapesOfModel();
    forEach<TriStrip>(&SubPool::m_TriStrips,
                      [&](int id, TriStrip & strip) { model.strips[id] = describe(strip); });
    forEach<Point3D>(&SubPool::m_Points, [&](int id, Point3D & point) {
        Triple position{};
        point.getCoordinates(position[0], position[1], position[2]);
        for (std::size_t i = 0; i < 3; ++i)
            model.points[id][i] = std::bit_cast<std::uint64_t>(position[i]);
    });
    forEach<SpotWeld>(&SubPool::m_SpotWelds,
                      [&](int id, SpotWeld & weld) { model.weldNames[id] = namesOf(weld); });
    forEach<Vertex>(&SubPool::m_Vertices,
                    [&](int id, Vertex & vertex) { model.vertices[id] = describe(vertex); });
    forEach<Edge>(&SubPool::m_Edges, [&](int id, Edge & edge) {
        model.edges[id] = {idIn(&SubPool::m_Curves3D, edge.getCurve()),
                           idIn(&SubPool::m_Vertices, edge.getStartVertex()),
                           idIn(&SubPool::m_Vertices, edge.getEndVertex()), edge.getSense()};
    });
    forEach<Fin>(&SubPool::m_Fins, [&](int id, Fin & fin) {
        model.fins[id] = {idIn(&SubPool::m_Edges, fin.getEdge()),
                          idIn(&SubPool::m_UVCurves, fin.getUVCurve()), fin.getSense()};
    });
    forEach<Loop>(&SubPool::m_Loops,
                  [&](int id, Loop & loop) { model.loops[id] = idsOf(&loop, &Loop::forEachFin); });
    forEach<Face>(&SubPool::m_Faces, [&](int id, Face & face) {
        model.faces[id] = {face.getLabel(), face.getSense(),
                           idIn(&SubPool::m_Surfaces, face.getSurface()),
                           idsOf(&face, &Face::forEachLoop)};
    });
    forEach<Shell>(&SubPool::m_Shells, [&](int id, Shell & shell) {
        model.shells[id] = {shell.getShellFlag(), idsOf(&shell, &Shell::forEachFace)};
    });
    forEach<Body>(&SubPool::m_Bodies, [&](int id, Body & body) {
        model.bodies[id] = {body.getName(), idsOf(&body, &Body::forEachShell),
                            idsOf(&body, &Body::forEachTriStrip)};
    });
    return model;
}

} // namespace tests
