#ifndef KELD_STEP_EXPORT_INVENTORY_H
#define KELD_STEP_EXPORT_INVENTORY_H

#include <Bnd_Box.hxx>
#include <TDF_Label.hxx>
#include <TDocStd_Document.hxx>
#include <TopoDS_Shape.hxx>
#include <gp_Pnt.hxx>
#include <set>
#include <string>
#include <vector>

namespace step {

/// Sizes of shapes. Volumes are those of solids, areas and centres those of all faces.
struct Measures
{
    double volume = 0;
    double area = 0;
    gp_XYZ moment; ///< the centre of the area, times the area
    Bnd_Box box;
};

/// What is counted and measured of one product with shapes.
struct PartInventory
{
    TDF_Label label;
    std::string name;
    TopoDS_Shape shape;
    long long solids = 0;
    long long shells = 0;
    long long faces = 0;
    long long edges = 0;  ///< those with a length
    long long points = 0; ///< vertices outside of edges
    Measures measures;
};

/// The sizes of a shape. Exact ones take longer. Of the others, the errors depend on the form of
/// the shape, and the box is that of its edges.
Measures measuresOf(TopoDS_Shape const & shape, bool exact);

/// What a document holds, so that two documents can be compared.
struct Inventory
{
    Handle(TDocStd_Document) document;
    std::multiset<std::string> products;
    long long instances = 0;
    std::multiset<std::string> instanceNames; ///< of those that have one
    std::vector<PartInventory> parts;         ///< by name, and by volume where names are the same
    std::set<std::string> colours;            ///< of products and of what stands in them
    std::set<std::string> layers;             ///< the same
    std::set<std::string> materials;
    std::multiset<std::string> instanceFacts; ///< words for each colour and layer of a place
    Measures whole;                           ///< all parts, each at all of its places
};

Inventory inventoryOf(Handle(TDocStd_Document) const & document);

/// The sizes of all parts together, each at all of its places.
Measures wholeOf(Inventory const & inventory);

/// The colours and layers of instances that `found` lacks.
std::vector<std::string> lostInstanceFacts(Inventory const & expected, Inventory const & found);

/// A sentence for each other thing in which `found` differs from `expected`; sizes may differ by a
/// millionth.
std::vector<std::string> differences(Inventory expected, Inventory found);

} // namespace step

#endif
