#include "build_gearbox.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/attributes/branch.h>
#include <keld-transl/attributes/leaf.h>
#include <keld-transl/attributes/node_tree.h>
#include <keld-transl/attributes/parameter.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/reporting/html_logger_entry.h>

namespace assembly {

namespace {

using transl_tk::Annotation;
using transl_tk::Assembly;
using transl_tk::Attribute;
using transl_tk::Branch;
using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::HtmlLoggerEntry;
using transl_tk::Instance;
using transl_tk::IValue;
using transl_tk::Leaf;
using transl_tk::Parameter;
using transl_tk::Part;
using transl_tk::Units;

// The toolkit passes on these numbers and gives no meaning to them: they are for host and
// translator to settle.
constexpr auto Colour = static_cast<Attribute::Type>(1);
constexpr auto FeatureList = static_cast<Branch::Tag>(1);
constexpr auto HolePattern = static_cast<Branch::Tag>(2);
constexpr auto Diameter = static_cast<Parameter::Param>(1);
constexpr auto Position = static_cast<Parameter::Param>(2);
constexpr auto Radians = static_cast<Units::AngularType>(2);

/// The transform of a turn about z, by its cosine and sine, and a shift, which this host and its
/// translator settle to be the last four of the sixteen numbers.
void place(Hierarchy * node, double cosine, double sine, double x, double y, double z)
{
    double const transform[16] = {cosine, sine, 0, 0, 0 - sine, cosine, 0, 0,
                                  0,      0,    1, 0, x,        y,      z, 1};
    node->setTransform(transform);
}

/// One more place for a component that hangs somewhere already.
void placeAgain(Assembly * in, Component * component, double x, double y, double z)
{
    Instance * const instance = Instance::create(0, component);
    place(instance, 1, 0, x, y, z);
    in->addChild(instance);
}

Part * addPart(Assembly * to, char const * name)
{
    Part * const part = Part::create(0, name);
    to->addChild(part);
    return part;
}

void colour(Part * part, unsigned char red, unsigned char green, unsigned char blue)
{
    Attribute * const attribute = Attribute::create("colour", Colour);
    for (unsigned char const component : {red, green, blue})
        attribute->addValue(component);
    attribute->addEntity(part);
}

/// The features of the housing: two patterns of holes that share one list of positions.
void addFeatures(Part * housing)
{
    Leaf * const corners = Leaf::create(4);
    corners->addParameter(Parameter::create(Position, 10, 10, 0));
    corners->addParameter(Parameter::create(Position, 110, 70, 0));
    Leaf * const size = Leaf::create(5);
    size->addParameter(Parameter::create(Diameter, IValue::create(6.6)));
    size->addProperty("thread", IValue::create("M6"));

    Branch * const bores = Branch::create(2, "Bores", HolePattern);
    bores->addNode(corners);
    Branch * const threads = Branch::create(3, "Threads", HolePattern);
    threads->addNode(corners);
    threads->addNode(size);
    threads->addEntity(housing);
    Branch * const features = Branch::create(1, "Features", FeatureList);
    features->addNode(bores);
    features->addNode(threads);
    housing->getNodeTree()->addNode(features);
}

/// A tolerance, with a line that leads to the face that it is about.
void addTolerance(Part * housing)
{
    double const place[3] = {60, 40, 55};
    double const right[3] = {1, 0, 0};
    double const up[3] = {0, 1, 0};
    double const size[3] = {3.5, 0, 0};
    double const leader[6] = {60, 40, 50, 60, 40, 55};
    int const black[3] = {0, 0, 0};
    int const none[3] = {0, 0, 0};
    housing->addAnnotation(Annotation::create(0, place, right, up, size, 2, leader, black, none,
                                              none, none, 1, 0, 0, 0, 0, "0.05 A",
                                              "flatness of the top face"));
}

Part * addHousing(Assembly * gearbox)
{
    Part * const housing = addPart(gearbox, "Housing");
    housing->setFirstLabel("GB-100");
    housing->setSecondLabel("revision B");
    housing->setPartLabel("casting");
    colour(housing, 110, 120, 130);
    for (double const x : {10.0, 110.0})
        housing->addPoint(transl_tk::Point3D::create(0, x, 10, 0));
    addFeatures(housing);
    addTolerance(housing);
    return housing;
}

/// Two shafts: the second has the first one's shaft and bearings once more.
void addShafts(Assembly * gearbox)
{
    Assembly * const input = Assembly::create(0, "Input shaft");
    gearbox->addChild(input);
    place(input, 1, 0, 30, 40, 0);
    Part * const shaft = addPart(input, "Shaft");
    colour(addPart(input, "Gear 17"), 200, 160, 40);
    Part * const bearing = addPart(input, "Bearing");
    placeAgain(input, bearing, 0, 0, 44);

    Assembly * const output = Assembly::create(0, "Output shaft");
    gearbox->addChild(output);
    place(output, 0.6, 0.8, 85, 40, 0);
    placeAgain(output, shaft, 0, 0, 0);
    colour(addPart(output, "Gear 43"), 200, 160, 40);
    placeAgain(output, bearing, 0, 0, 0);
    placeAgain(output, bearing, 0, 0, 44);
}

void addScrews(Assembly * gearbox)
{
    Part * const screw = addPart(gearbox, "Screw 1/4-20");
    screw->setUnits(Units::create(Units::Inch, Radians, 1, 1));
    place(screw, 1, 0, 10, 10, 50);
    for (double const x : {10.0, 110.0})
        for (double const y : {10.0, 70.0})
            if (x != 10 || y != 10)
                placeAgain(gearbox, screw, x, y, 50);
}

void addProductData(Assembly * gearbox, Part * housing)
{
    Attribute * const ratio = Attribute::create("ratio", Attribute::Product);
    ratio->addValue(17);
    ratio->addValue(43);
    ratio->addEntity(gearbox);
    Attribute * const material = Attribute::create("material", Attribute::Product);
    material->addValue("EN-GJL-250");
    material->addValue(7.15);
    material->addValue(true);
    material->addEntity(housing);
    Attribute * const comment = Attribute::create("comment", Attribute::Comment);
    comment->addValue("Check the oil level after 100 hours.");
    comment->addEntity(gearbox);
}

} // namespace

Assembly * buildGearbox()
{
    Assembly * const gearbox = Assembly::create(0, "Gearbox");
    Part * const housing = addHousing(gearbox);
    addShafts(gearbox);
    addScrews(gearbox);
    addProductData(gearbox, housing);
    HtmlLoggerEntry::create("The gears carry their pitch diameters only.", HtmlLoggerEntry::Part,
                            static_cast<HtmlLoggerEntry::EntryType>(Warning));
    HtmlLoggerEntry::create("Parts that are placed several times are stored once.",
                            HtmlLoggerEntry::Instance,
                            static_cast<HtmlLoggerEntry::EntryType>(Information));
    return gearbox;
}

} // namespace assembly
