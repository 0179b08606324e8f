#include "export/difference_list.h"
#include "export/inventory.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace step {

namespace {

template <class Names> std::vector<std::string> sorted(Names const & names)
{
    return {names.begin(), names.end()};
}

void compareMeasures(DifferenceList & list, std::string const & of, Measures const & expected,
                     Measures const & found)
{
    list.compare("volume" + of, expected.volume, found.volume, std::abs(expected.volume));
    list.compare("area" + of, expected.area, found.area, expected.area);
    list.compare(of, expected.box, found.box);
    if (expected.area > 0 && found.area > 0) {
        gp_XYZ const a = expected.moment / expected.area;
        gp_XYZ const b = found.moment / found.area;
        list.compare("centre" + of + " less that in the model", 0, (a - b).Modulus(),
                     std::sqrt(expected.box.SquareExtent()) + a.Modulus());
    }
}

void comparePart(DifferenceList & list, PartInventory & expected, PartInventory & found)
{
    std::string const of = " of \"" + expected.name + "\"";
    list.compare("number of solids" + of, expected.solids, found.solids);
    list.compare("number of shells" + of, expected.shells, found.shells);
    list.compare("number of faces" + of, expected.faces, found.faces);
    list.compare("number of edges" + of, expected.edges, found.edges);
    list.compare("number of points" + of, expected.points, found.points);
    DifferenceList quick;
    compareMeasures(quick, of, expected.measures, found.measures);
    if (quick.take().empty())
        return;
    // Two forms of one shape may be measured with different errors.
    expected.measures = measuresOf(expected.shape, true);
    found.measures = measuresOf(found.shape, true);
    compareMeasures(list, of, expected.measures, found.measures);
}

} // namespace

std::vector<std::string> differences(Inventory expected, Inventory found)
{
    DifferenceList list;
    list.compareNames("products", sorted(expected.products), sorted(found.products));
    list.compare("number of instances", expected.instances, found.instances);
    list.expectNames("instance names", sorted(expected.instanceNames), sorted(found.instanceNames));
    list.compareNames("colours", sorted(expected.colours), sorted(found.colours));
    list.compareNames("layers", sorted(expected.layers), sorted(found.layers));
    list.compareNames("materials", sorted(expected.materials), sorted(found.materials));
    list.compare("number of parts", static_cast<long long>(expected.parts.size()),
                 static_cast<long long>(found.parts.size()));
    if (expected.parts.size() == found.parts.size()) {
        for (std::size_t i = 0; i < expected.parts.size(); ++i)
            comparePart(list, expected.parts[i], found.parts[i]);
    }
    compareMeasures(list, "", wholeOf(expected), wholeOf(found));
    return list.take();
}

std::vector<std::string> lostInstanceFacts(Inventory const & expected, Inventory const & found)
{
    std::vector<std::string> result;
    std::set_difference(expected.instanceFacts.begin(), expected.instanceFacts.end(),
                        found.instanceFacts.begin(), found.instanceFacts.end(),
                        std::back_inserter(result));
    return result;
}

} // namespace step
