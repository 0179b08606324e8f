#include "vise.h"

#include "build_shapes.h"
#include "palette.h"

#include <Quantity_Color.hxx>
#include <XCAFApp_Application.hxx>
#include <string>

namespace vise {

namespace {

Quantity_Color rgb(int red, int green, int blue)
{
    return {red / 255.0, green / 255.0, blue / 255.0, Quantity_TOC_sRGB};
}

Quantity_Color const enamel = rgb(38, 92, 148);
Quantity_Color const steel = rgb(176, 181, 188);
Quantity_Color const darkSteel = rgb(92, 97, 105);
Quantity_Color const zinc = rgb(205, 206, 196);
Quantity_Color const brass = rgb(212, 175, 85);
Quantity_Color const red = rgb(196, 44, 38);
Quantity_Color const black = rgb(35, 35, 38);
Quantity_Color const yellow = rgb(240, 200, 40);
Quantity_Color const orange = rgb(240, 130, 30);

constexpr char const * castings = "castings";
constexpr char const * turned = "turned parts";
constexpr char const * fittings = "standard parts";
constexpr char const * auxiliary = "auxiliary geometry";

gp_Ax1 const upright({0, 0, 0}, {0, 0, 1});

/// Draws one vise. Of several, each has names of its own.
class ViseDrawing
{
public:
    ViseDrawing(Palette & palette, std::string suffix)
        : m_Palette(palette), m_Suffix(std::move(suffix))
    {}

    TDF_Label draw(std::vector<OffsetEdge> & offsetEdges)
    {
        TDF_Label const vise = assembly("Maschinenschraubstock 80 mm");
        TDF_Label const jawSet = drawJawSet();
        m_Palette.place(vise, part(base(), "Grundkörper", enamel, castings, Material::CastIron),
                        "Grundkörper");
        m_Palette.place(vise, drawSlide(jawSet, offsetEdges), "Schlitten");
        m_Palette.place(vise, jawSet, "feste Backe",
                        shift(FixedJaw - PlateThickness, 0, PlateBottom));
        m_Palette.place(vise, drawSpindleSet(), "Spindel");
        placeFixings(vise);
        m_Palette.place(vise, part(anvilPlate(), "Amboßplatte", steel, castings, Material::Steel),
                        "Amboßplatte");
        m_Palette.place(vise, sheet(splashGuard(), "Spritzblech", zinc), "Spritzblech hinten");
        m_Palette.place(vise, sheet(constructionLines(), "Achse und Drehsinn ↻", orange),
                        "Achse der Spindel");
        return vise;
    }

private:
    TDF_Label assembly(std::string const & name) { return m_Palette.assembly(name + m_Suffix); }

    TDF_Label sheet(TopoDS_Shape const & shape, std::string const & name,
                    Quantity_Color const & colour)
    {
        TDF_Label const label = m_Palette.part(shape, name + m_Suffix, auxiliary);
        m_Palette.paint(label, colour);
        return label;
    }

    TDF_Label colourless(TopoDS_Shape const & shape, std::string const & name, char const * layer,
                         Material material)
    {
        TDF_Label const label = m_Palette.part(shape, name + m_Suffix, layer);
        m_Palette.setMaterial(label, material);
        m_Palette.addProperties(label, shape);
        return label;
    }

    TDF_Label part(TopoDS_Shape const & shape, std::string const & name,
                   Quantity_Color const & colour, char const * layer, Material material)
    {
        TDF_Label const label = colourless(shape, name, layer, material);
        m_Palette.paint(label, colour);
        return label;
    }

    TDF_Label drawJawSet()
    {
        TDF_Label const set = assembly("Backenplatte mit Schrauben");
        JawPlate const plate = jawPlate();
        TDF_Label const plateLabel =
            part(plate.shape, "Backenplatte, gehärtet", darkSteel, turned, Material::Steel);
        for (TopoDS_Face const & grip : plate.grip)
            m_Palette.paint(plateLabel, grip, red);
        TDF_Label const screw =
            part(countersunkScrew(), "Senkschraube M5×15", zinc, fittings, Material::Steel);
        m_Palette.place(set, plateLabel, "Platte");
        m_Palette.place(set, screw, "Schraube links", shift(0, -ScrewSpacing, ScrewHeight));
        m_Palette.place(set, screw, "Schraube rechts", shift(0, ScrewSpacing, ScrewHeight));
        return set;
    }

    TDF_Label drawSlide(TDF_Label const & jawSet, std::vector<OffsetEdge> & offsetEdges)
    {
        TDF_Label const set = assembly("Schlitten, vollständig");
        m_Palette.place(set, part(slide(), "Schlitten", enamel, castings, Material::CastIron),
                        "Schlitten");
        m_Palette.place(set, part(leftRail(), "Führungsleiste", steel, castings, Material::Steel),
                        "Leiste links");
        m_Palette.place(
            set, part(rightRail(), "Führungsleiste, gespiegelt", steel, castings, Material::Steel),
            "Leiste rechts");
        m_Palette.place(set, jawSet, "bewegliche Backe",
                        shift(MovableJaw + PlateThickness, 0, PlateBottom) * turn(upright, 180));
        NamePlate const plate = namePlate();
        offsetEdges.insert(offsetEdges.end(), plate.offsetEdges.begin(), plate.offsetEdges.end());
        TDF_Label const plateLabel =
            part(plate.shape, "Typenschild «Größe 3»", steel, fittings, Material::Brass);
        m_Palette.paint(plateLabel, plate.top, brass);
        m_Palette.place(set, plateLabel, "Typenschild");
        return set;
    }

    TDF_Label drawHandle()
    {
        TDF_Label const handle = assembly("Knebel");
        TDF_Label const ball = part(knob(), "Kugelknopf Ø16", red, turned, Material::Rubber);
        m_Palette.place(handle, part(handleBar(), "Knebelstange", steel, turned, Material::Steel),
                        "Stange");
        m_Palette.place(handle, ball, "Knopf vorn");
        // Stronger than the colour of the part.
        m_Palette.paint(m_Palette.place(handle, ball, "Knopf hinten", turn(upright, 180)), black);
        return handle;
    }

    TDF_Label drawSpindleSet()
    {
        TDF_Label const set = assembly("Spindel, vollständig");
        m_Palette.place(set, part(spindle(), "Spindel Tr14×2,5", steel, turned, Material::Steel),
                        "Spindel");
        m_Palette.place(set, part(sealRing(), "Dichtring", black, fittings, Material::Rubber),
                        "Dichtring", shift(-1.6, 0, SpindleHeight));
        m_Palette.place(set, drawHandle(), "Knebel",
                        shift(HandlePlace, 0, SpindleHeight) *
                            turn(gp_Ax1({0, 0, 0}, {1, 0, 0}), 35));
        return set;
    }

    void placeFixings(TDF_Label const & vise)
    {
        TDF_Label const fixing = assembly("Befestigung");
        m_Palette.place(
            fixing, colourless(hexagonBolt(), "Sechskantschraube M10", fittings, Material::Steel),
            "Schraube");
        m_Palette.place(fixing, colourless(washer(), "Scheibe 10,5", fittings, Material::Steel),
                        "Scheibe");
        // Only its places have colours.
        constexpr double Top = 16;
        auto const fix = [&](char const * name, Quantity_Color const & colour, double x, double y,
                             double angle) {
            m_Palette.paint(
                m_Palette.place(vise, fixing, name, shift(x, y, Top) * turn(upright, angle)),
                colour);
        };
        fix("Befestigung 1", zinc, -6, -32, 0);
        fix("Befestigung 2", zinc, -6, 32, 20);
        fix("Befestigung 3", zinc, 170, -32, 45);
        fix("Befestigung 4 (prüfen!)", yellow, 170, 32, 70);
    }

    Palette & m_Palette;
    std::string m_Suffix;
};

} // namespace

Drawing drawVises(int copies)
{
    Drawing drawing;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", drawing.document);
    Palette palette(*drawing.document);
    if (copies == 1) {
        ViseDrawing(palette, "").draw(drawing.offsetEdges);
    } else {
        constexpr int PerRow = 10;
        TDF_Label const table = palette.assembly("Tisch");
        for (int i = 0; i < copies; ++i) {
            std::string const number = " " + std::to_string(i + 1);
            TDF_Label const vise = ViseDrawing(palette, number).draw(drawing.offsetEdges);
            int const row = i / PerRow;
            palette.place(table, vise, "Schraubstock" + number,
                          shift(300.0 * row, 150.0 * (i % PerRow), 0));
        }
    }
    palette.finish();
    return drawing;
}

} // namespace vise
