#include "inventory.h"

#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <TopExp_Explorer.hxx>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>

namespace step {

namespace {

constexpr double Share = 1e-6;
constexpr std::size_t MostNames = 5;

std::string wordsOf(double number)
{
    char digits[32];
    constexpr int Digits = 12;
    char * const end =
        std::to_chars(digits, digits + sizeof(digits), number, std::chars_format::general, Digits)
            .ptr;
    return {digits, end};
}

/// Says in one list how things differ.
class Report
{
public:
    void compare(std::string const & what, long long expected, long long found)
    {
        if (expected != found)
            add(what, std::to_string(expected), std::to_string(found));
    }

    void compare(std::string const & what, double expected, double found, double size)
    {
        if (!(std::abs(expected - found) <= Share * size))
            add(what, wordsOf(expected), wordsOf(found));
    }

    template <class Names>
    void compareNames(std::string const & what, Names const & expected, Names const & found)
    {
        std::vector<std::string> missing;
        std::set_difference(expected.begin(), expected.end(), found.begin(), found.end(),
                            std::back_inserter(missing));
        std::string list;
        for (std::size_t i = 0; i < std::min(missing.size(), MostNames); ++i)
            list += (i == 0 ? "\"" : ", \"") + missing[i] + "\"";
        if (!missing.empty())
            m_Sentences.push_back("The file lacks " + std::to_string(missing.size()) + " of the " +
                                  what + ": " + list + ".");
        compare("number of " + what, static_cast<long long>(expected.size()),
                static_cast<long long>(found.size()));
    }

    std::vector<std::string> take() { return std::move(m_Sentences); }

private:
    void add(std::string const & what, std::string const & expected, std::string const & found)
    {
        m_Sentences.push_back("The " + what + " is " + expected + " in the model and " + found +
                              " in the file.");
    }

    std::vector<std::string> m_Sentences;
};

double diagonalOf(Bnd_Box const & box)
{
    return box.IsVoid() ? 0 : std::sqrt(box.SquareExtent());
}

void compareBoxes(Report & report, std::string const & of, Bnd_Box const & expected,
                  Bnd_Box const & found)
{
    if (expected.IsVoid() || found.IsVoid()) {
        report.compare("number of bounding boxes" + of, expected.IsVoid() ? 0LL : 1LL,
                       found.IsVoid() ? 0LL : 1LL);
        return;
    }
    double const size = diagonalOf(expected);
    gp_XYZ const low = expected.CornerMin().XYZ();
    gp_XYZ const high = expected.CornerMax().XYZ();
    constexpr char const * Axes[] = {"x", "y", "z"};
    for (int i = 1; i <= 3; ++i) {
        std::string const axis = std::string(" ") + Axes[i - 1] + of;
        report.compare("least" + axis, low.Coord(i), found.CornerMin().Coord(i), size);
        report.compare("greatest" + axis, high.Coord(i), found.CornerMax().Coord(i), size);
    }
}

void compareMeasures(Report & report, std::string const & of, Measures const & expected,
                     Measures const & found)
{
    report.compare("volume" + of, expected.volume, found.volume, std::abs(expected.volume));
    report.compare("area" + of, expected.area, found.area, expected.area);
    compareBoxes(report, of, expected.box, found.box);
    if (expected.area > 0 && found.area > 0) {
        gp_XYZ const a = expected.moment / expected.area;
        gp_XYZ const b = found.moment / found.area;
        report.compare("centre" + of + " less that in the model", 0, (a - b).Modulus(),
                       diagonalOf(expected.box) + a.Modulus());
    }
}

/// The sizes of a part to any number of digits, which takes longer.
Measures exactMeasuresOf(PartInventory const & part)
{
    constexpr double Error = 1e-8;
    Measures result = part.measures;
    GProp_GProps area;
    BRepGProp::SurfaceProperties(part.shape, area, Error);
    result.area = area.Mass();
    result.moment = area.CentreOfMass().XYZ() * area.Mass();
    result.volume = 0;
    for (TopExp_Explorer solid(part.shape, TopAbs_SOLID); solid.More(); solid.Next()) {
        GProp_GProps volume;
        BRepGProp::VolumeProperties(solid.Current(), volume, Error);
        result.volume += volume.Mass();
    }
    return result;
}

void comparePart(Report & report, PartInventory const & expected, PartInventory const & found)
{
    std::string const of = " of \"" + expected.name + "\"";
    report.compare("number of solids" + of, expected.solids, found.solids);
    report.compare("number of shells" + of, expected.shells, found.shells);
    report.compare("number of faces" + of, expected.faces, found.faces);
    report.compare("number of edges" + of, expected.edges, found.edges);
    report.compare("number of points" + of, expected.points, found.points);
    Report quick;
    compareMeasures(quick, of, expected.measures, found.measures);
    // Two forms of one shape may be integrated with different errors.
    if (!quick.take().empty())
        compareMeasures(report, of, exactMeasuresOf(expected), exactMeasuresOf(found));
}

} // namespace

std::vector<std::string> differences(Inventory const & expected, Inventory const & found)
{
    Report report;
    report.compareNames("products", expected.products, found.products);
    report.compareNames("instances", expected.instances, found.instances);
    report.compareNames("colours", expected.colours, found.colours);
    report.compareNames("layers", expected.layers, found.layers);
    report.compareNames("materials", expected.materials, found.materials);
    report.compare("number of parts", static_cast<long long>(expected.parts.size()),
                   static_cast<long long>(found.parts.size()));
    if (expected.parts.size() == found.parts.size()) {
        for (std::size_t i = 0; i < expected.parts.size(); ++i)
            comparePart(report, expected.parts[i], found.parts[i]);
    }
    compareMeasures(report, "", expected.whole, found.whole);
    return report.take();
}

} // namespace step
