#include "process/kit_product.h"

#include <keld-transl/transl_tk.h>

#include <limits>

namespace tests {

namespace {

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
using transl_tk::Pool;
using transl_tk::Units;

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

void report(std::string const & text, int kind, int type)
{
    HtmlLoggerEntry::create(text.c_str(), static_cast<HtmlLoggerEntry::EntityType>(kind),
                            static_cast<HtmlLoggerEntry::EntryType>(type));
}

void moveBy(Hierarchy * node, double x, double y, double z)
{
    double const transform[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
    node->setTransform(transform);
}

void setUnits(Component * component, int lengthType, double scale)
{
    component->setUnits(Units::create(static_cast<Units::LengthType>(lengthType),
                                      static_cast<Units::AngularType>(2), scale, 1));
}

void addParameterTree(Part * part)
{
    Leaf * const shared = Leaf::create(12);
    Parameter * const depth =
        Parameter::create(static_cast<Parameter::Param>(31), 1.5, -0.25, 1e300);
    shared->addParameter(depth);
    shared->addProperty("shape", IValue::create("round"));
    shared->addProperty("count", IValue::create(6));
    shared->addEntity(part);
    Branch * const holes = Branch::create(11, "Holes", static_cast<Branch::Tag>(7));
    holes->addNode(shared);
    Branch * const features = Branch::create(10, "Features", static_cast<Branch::Tag>(3));
    features->addNode(holes);
    features->addNode(shared);
    part->getNodeTree()->addNode(features);
}

void addAnnotation(Part * part)
{
    double const first[3] = {1, 2, 3};
    double const second[3] = {4, 5, 6};
    double const third[3] = {7, 8, 9};
    double const fourth[3] = {0.5, 0.25, 0.125};
    double const points[6] = {10, 11, 12, 13, 14, 15};
    int const firstInts[3] = {1, 0, 0};
    int const secondInts[3] = {0, 2, 0};
    int const thirdInts[3] = {0, 0, 3};
    int const fourthInts[3] = {4, 4, 4};
    part->addAnnotation(transl_tk::Annotation::create(0, first, second, third, fourth, 2, points,
                                                      firstInts, secondInts, thirdInts, fourthInts,
                                                      21, 22, 23, 24, 25, "0.05 A", "note"));
}

void addAttributes(Part * part, Assembly * top)
{
    Attribute * const colour = Attribute::create("colour", static_cast<Attribute::Type>(1));
    for (int const component : {200, 100, 50})
        colour->addValue(static_cast<unsigned char>(component));
    colour->addEntity(part);
    Attribute * const mixed = Attribute::create("mixed", Attribute::Product);
    mixed->addValue("steel");
    mixed->addValue(-7);
    mixed->addValue(true);
    mixed->addValue(0.1);
    mixed->addEntity(top);
    mixed->addEntity(part);
}

void makeTree()
{
    Assembly * const top = Assembly::create(0, "Pump");    // 1
    Part * const housing = Part::create(0, "Housing");     // 2
    Assembly * const rotor = Assembly::create(0, "Rotor"); // 3
    Part * const blade = Part::create(0, "Blade");         // 4
    Instance * const second = Instance::create(0, blade);  // 5
    Instance * const third = Instance::create(0, rotor);   // 6
    top->addChild(housing);
    top->addChild(rotor);
    rotor->addChild(blade);
    rotor->addChild(second);
    top->addChild(third);
    moveBy(second, 10, 0.1, -2.5);
    moveBy(third, 0, 0, 40);
    setUnits(housing, Units::Inch, 2);
    setUnits(blade, 99, 1);
    housing->setFirstLabel("first");
    housing->setSecondLabel("second");
    housing->setPartLabel("label");
    housing->addPoint(transl_tk::Point3D::create(0, 1, 2, 3));
    transl_tk::Vertex::create(0, 0.5);
    addParameterTree(housing);
    addAnnotation(housing);
    addAttributes(housing, top);
    report("Read the housing.", HtmlLoggerEntry::Part, 0);
}

void makePlaced()
{
    Assembly * const machine = Assembly::create(0, "machine");
    machine->addChild(Instance::create(0, Part::create(0, "bolt")));
}

void makeMarkup()
{
    std::string const script = "<script>document.title='ran'</script><img src=x onerror=\""
                               "document.title='ran'\">&amp;'\"</style></bdi></title>";
    Assembly * const top = Assembly::create(0, script.c_str());
    top->addChild(Part::create(0, "control \x01\x1b[31m\x7f\xc2\x9b end"));
    top->addChild(Part::create(0, "broken \xff\xc0\xaf\xed\xa0\x80\xf5 utf-8"));
    top->addChild(Part::create(0, "odd \xe0\x80\x80 \xf4\x90\x80\x80 \xef\xbf\xbf \xf0\x9f"));
    top->addChild(Part::create(0, "kept \xc3\xa4 \xe2\x82\xac \xf0\x9f\x94\xa7 name"));
    top->addChild(Part::create(0, "right \xe2\x80\xae left"));
    top->addChild(Part::create(0, "two\nlines"));
    report("entry " + script, HtmlLoggerEntry::Face, 2);
    report("entry \x02 \xfe", HtmlLoggerEntry::Edge, 1);
    Pool::getInstance()->logger()->addEntry(("log " + script).c_str(), 1);
    Pool::getInstance()->logger()->addEntry("log \x03 \xfd", 2);
}

void makeLong()
{
    std::string const text(1 << 20, '<');
    report(text, HtmlLoggerEntry::Body, 1);
    Pool::getInstance()->logger()->addEntry(text.c_str(), 1);
    Part::create(0, "after");
}

void makeLost()
{
    report("Face 12 has no border.", HtmlLoggerEntry::Face, 2);
    report("Face 13 has no border.", HtmlLoggerEntry::Face, 2);
    report("Edge 4 is short.", HtmlLoggerEntry::Edge, 1);
    report("Edge 5 is gone.", HtmlLoggerEntry::Edge, 2);
    report("Nothing is known of this kind.", 77, 2);
    report("Nothing is known of this type.", HtmlLoggerEntry::Loop, 9);
    report("A note.", HtmlLoggerEntry::Model, 0);
    transl_tk::Point3D::create(0, 0, 0, 0);
}

void makeManyLost()
{
    for (int i = 1; i <= 8; ++i)
        report("Body " + std::to_string(i) + " is gone.", HtmlLoggerEntry::Body, 2);
}

void makeManyKinds()
{
    for (int kind = 1001; kind <= 13000; ++kind)
        report("of a kind of its own", kind, 2);
}

void makeLists()
{
    auto * const log = Pool::getInstance()->logger();
    using Line = cad::ILoggerPolicy;
    log->addEntry("plain", 1);
    log->addEntry("set in", 1, Line::Indented, true);
    log->addEntry("in two", 2, Line::WarningLine, true);
    log->addEntry("in three", 3, Line::Text, false);
    log->addEntry("in six", 6, Line::Text, true);
}

void makeDeep()
{
    Assembly * parent = nullptr;
    for (int level = 0; level < 5000; ++level) {
        Assembly * const assembly = Assembly::create(0, "level");
        if (parent != nullptr)
            parent->addChild(assembly);
        parent = assembly;
    }
    parent->addChild(Part::create(0, "bottom"));
}

void makeWide()
{
    Assembly * const top = Assembly::create(0, "wide");
    for (int i = 0; i < 12000; ++i)
        top->addChild(Part::create(0, ("part " + std::to_string(i)).c_str()));
}

void makeNumbers()
{
    Part * const part = Part::create(0, "part");
    double const transform[16] = {NotANumber, Infinity, -Infinity, -0.0,
                                  0.1,        1.0 / 3,  5e-324,    1.7976931348623157e308};
    part->setTransform(transform);
    Attribute * const values = Attribute::create("values", static_cast<Attribute::Type>(4));
    values->addValue(NotANumber);
    values->addValue(123456789.123456789);
    values->addValue(std::numeric_limits<int>::min());
    values->addValue(static_cast<IValue *>(nullptr));
    values->addValue("broken \xff");
}

} // namespace

bool makeProduct(std::string const & name)
{
    if (name == "product")
        makeTree();
    else if (name == "parts") {
        Part::create(0, "first");
        Part::create(0, "second");
    } else if (name == "markup")
        makeMarkup();
    else if (name == "long")
        makeLong();
    else if (name == "lost")
        makeLost();
    else if (name == "many-lost")
        makeManyLost();
    else if (name == "many-kinds")
        makeManyKinds();
    else if (name == "log-error")
        Pool::getInstance()->logger()->addEntry("a face is gone", 1, cad::ILoggerPolicy::ErrorLine,
                                                true);
    else if (name == "placed")
        makePlaced();
    else if (name == "lists")
        makeLists();
    else if (name == "deep")
        makeDeep();
    else if (name == "wide")
        makeWide();
    else if (name == "numbers")
        makeNumbers();
    else
        return false;
    return true;
}

} // namespace tests
