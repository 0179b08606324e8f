#include "product_models.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>

#include <algorithm>
#include <string>
#include <vector>

namespace bench {

namespace {

using namespace transl_tk;

constexpr int InstancesAPart = 1000;
constexpr int InstancesAnAssembly = 100;
constexpr int AssembliesAnAssembly = 10;
constexpr int AttributesAPoint = 10;

/// A quarter turn about the third axis and a place of its own.
void place(Hierarchy & node, int number)
{
    double const x = number;
    double const matrix[16] = {0, -1, 0, x, 1, 0, 0, 2 * x, 0, 0, 1, 3 * x, 0, 0, 0, 1};
    node.setTransform(matrix);
}

} // namespace

void createInstances(int count, Transforms transforms)
{
    int const assemblyCount = std::max(1, count / InstancesAnAssembly);
    int const partCount = std::max(1, count / InstancesAPart);
    int id = RootId;
    std::vector<Assembly *> assemblies;
    for (int i = 0; i < assemblyCount; ++i) {
        assemblies.push_back(Assembly::create(id, ("Assembly " + std::to_string(i)).c_str()));
        ++id;
    }
    std::vector<Part *> parts;
    for (int i = 0; i < partCount; ++i) {
        parts.push_back(Part::create(id, ("Part " + std::to_string(i)).c_str()));
        ++id;
    }
    std::vector<Instance *> instances;
    for (int i = 0; i < count; ++i) {
        Instance * const instance =
            Instance::create(id, parts[static_cast<std::size_t>(i % partCount)]);
        ++id;
        if (transforms == Transforms::OneEach)
            place(*instance, i);
        instances.push_back(instance);
    }
    int child = 0;
    for (int i = 0; i < assemblyCount; ++i) {
        Assembly * const assembly = assemblies[static_cast<std::size_t>(i)];
        int const first = i * AssembliesAnAssembly + 1;
        for (int below = first; below < std::min(first + AssembliesAnAssembly, assemblyCount);
             ++below)
            assembly->addChild(assemblies[static_cast<std::size_t>(below)]);
        int const last = i + 1 < assemblyCount ? child + InstancesAnAssembly : count;
        for (; child < last; ++child)
            assembly->addChild(instances[static_cast<std::size_t>(child)]);
    }
}

void createAttributes(int count)
{
    std::vector<Point3D *> points;
    for (int i = 0; i < std::max(2, count / AttributesAPoint); ++i)
        points.push_back(Point3D::create(i + 1, i, 2.0 * i, 3.0 * i));
    for (int i = 0; i < count; ++i) {
        Attribute * const attribute = Attribute::create("Density", Attribute::Product);
        attribute->addValue(i);
        attribute->addValue(0.5 * i);
        attribute->addValue("kg/m3");
        auto const first = static_cast<std::size_t>(i) % points.size();
        attribute->addEntity(points[first]);
        attribute->addEntity(points[(first + 1) % points.size()]);
    }
}

void createWideAssembly(int children)
{
    Assembly * const assembly = Assembly::create(RootId, "Wide");
    Part * const part = Part::create(0, "Part");
    for (int i = 0; i < children; ++i)
        assembly->addChild(Instance::create(0, part));
}

} // namespace bench
