#include "build_shapes.h"
#include "parts.h"

#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <GeomAPI_PointsToBSpline.hxx>
#include <Geom_BSplineCurve.hxx>
#include <TColgp_Array1OfPnt.hxx>

namespace vise {

namespace {

constexpr double HalfBar = 52;
constexpr double PinLength = 7;
constexpr double PinRadius = 2.5;

gp_Dir const alongX(1, 0, 0);
gp_Dir const alongY(0, 1, 0);

} // namespace

TopoDS_Shape spindle()
{
    constexpr double Crest = 7;
    constexpr double Root = 6;
    constexpr double Pitch = 2.5;
    constexpr int Threads = 15;
    auto const at = [](double x, double radius) { return gp_Pnt(x, 0, SpindleHeight + radius); };

    std::vector<gp_Pnt> profile = {at(-44, 0),    at(-44, 7),  at(-42, 9.5), at(-26, 9.5),
                                   at(-24.5, 11), at(-19, 11), at(-17.5, 9), at(-17.5, Root)};
    // Rings stand for the thread.
    double x = -15;
    for (int i = 0; i < Threads; ++i) {
        profile.push_back(at(x, Root));
        profile.push_back(at(x + 0.5, Crest));
        profile.push_back(at(x + 1.25, Crest));
        profile.push_back(at(x + 1.75, Root));
        x += Pitch;
    }
    profile.push_back(at(25.5, Root));
    profile.push_back(at(25.5, 5.5));
    profile.push_back(at(31, 0));
    TopoDS_Shape const turned = revolved(polygon(profile), {{0, 0, SpindleHeight}, alongX});
    gp_Ax1 const bore({HandlePlace, -20, SpindleHeight}, alongY);
    return checked(cut(turned, cylinder(bore, 4.2, 40)), "the spindle is not valid");
}

TopoDS_Shape sealRing()
{
    gp_Ax2 const place({0, 0, 0}, alongX);
    return checked(BRepPrimAPI_MakeTorus(place, 8.1, 1.6).Solid(), "the seal ring is not valid");
}

TopoDS_Shape handleBar()
{
    TColgp_Array1OfPnt points(1, 7);
    double const radii[] = {3.2, 3.4, 3.8, 4, 3.8, 3.4, 3.2};
    for (int i = 0; i < 7; ++i)
        points(i + 1) = {radii[i], -HalfBar + i * HalfBar / 3, 0};
    TopoDS_Edge const belly = edge(GeomAPI_PointsToBSpline(points).Curve());

    double const end = HalfBar + PinLength;
    std::vector<TopoDS_Edge> outline = {belly};
    gp_Pnt last = points(7);
    for (gp_Pnt const & next : {gp_Pnt(PinRadius, HalfBar, 0), gp_Pnt(PinRadius, end, 0),
                                gp_Pnt(0, end, 0), gp_Pnt(0, -end, 0), gp_Pnt(PinRadius, -end, 0),
                                gp_Pnt(PinRadius, -HalfBar, 0), points(1)}) {
        outline.push_back(line(last, next));
        last = next;
    }
    return checked(revolved(face(wire(outline)), {{0, 0, 0}, alongY}), "the bar is not valid");
}

TopoDS_Shape knob()
{
    constexpr double Radius = 8;
    gp_Pnt const middle(0, HalfBar + 6, 0);
    // The bar goes in at one pole; the other one stays.
    TopoDS_Shape const ball = BRepPrimAPI_MakeSphere(gp_Ax2(middle, alongY), Radius).Solid();
    TopoDS_Shape const flat = cut(ball, box({-20, HalfBar - 10, -20}, {20, HalfBar, 20}));
    return checked(cut(flat, cylinder({{0, HalfBar - 1, 0}, alongY}, PinRadius, PinLength + 1)),
                   "the knob is not valid");
}

} // namespace vise
