#include "stream/geometry_stream.h"
#include "stream/shape_description.h"
#include "support/child.h"

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <rapidcheck.h>
#include <set>

namespace transl_tk {
namespace {

using namespace tests;

/// Random decisions, read off a list that rapidcheck makes and, after a failure, shortens. Behind
/// its end all decisions are 0, which every choice below takes for the smallest one.
class Decisions
{
public:
    explicit Decisions(std::vector<std::uint64_t> list) : m_List(std::move(list)) {}

    bool areOver() const { return m_Next >= m_List.size(); }
    std::uint64_t next() { return areOver() ? 0 : m_List[m_Next++]; }
    int below(int limit) { return static_cast<int>(next() % static_cast<unsigned>(limit)); }
    int number() { return static_cast<int>(static_cast<unsigned>(next())); }

    double value()
    {
        constexpr std::uint64_t Sign = 0x8000000000000000;
        constexpr std::uint64_t Exponent = 0x7FF0000000000000;
        std::uint64_t bits = next();
        switch (below(8)) {
        case 1: // infinite
            bits = (bits & Sign) | Exponent;
            break;
        case 2: // a NaN, quiet or signalling
            bits |= Exponent | 1;
            break;
        case 3: // too small for an exponent
            bits &= ~Exponent;
            break;
        case 4: // negative zero
            bits = Sign;
            break;
        default:
            break;
        }
        return std::bit_cast<double>(bits);
    }

private:
    std::vector<std::uint64_t> m_List;
    std::size_t m_Next = 0;
};

/// The kinds that were made in this run, to see that none was left out.
std::set<int> curveKinds;
std::set<int> surfaceKinds;

void addValues(ShapeDescription & shape, Decisions & decisions, int count)
{
    for (; count > 0; --count)
        shape.values.push_back(decisions.value());
}

void addNumbers(ShapeDescription & shape, Decisions & decisions, int count)
{
    for (; count > 0; --count)
        shape.numbers.push_back(decisions.number());
}

geom::Parameterization randomParameterization(Decisions & decisions)
{
    geom::Parameterization made;
    made.m_Form = static_cast<geom::ParamForm>(decisions.number());
    for (int left = decisions.below(3); left > 0; --left)
        made.m_Values.push_back(decisions.value());
    return made;
}

void makeSpline(ShapeDescription & shape, Decisions & decisions, int dimension)
{
    int const points = decisions.below(4);
    int const knots = decisions.below(4);
    bool const isRational = points != 0 && decisions.below(2) != 0;
    shape.numbers = {
        decisions.number(), decisions.below(2), decisions.below(2), isRational, points, knots};
    addNumbers(shape, decisions, knots);
    addValues(shape, decisions, (dimension + isRational) * points + knots);
}

void makeSplineSurface(ShapeDescription & shape, Decisions & decisions)
{
    int const u = decisions.below(3);
    int const v = decisions.below(3);
    int const knotsU = decisions.below(3);
    int const knotsV = decisions.below(3);
    bool const isRational = u * v != 0 && decisions.below(2) != 0;
    int const form = decisions.below(2) != 0 ? decisions.number() : geom::Surface::BSpline;
    shape.numbers = {form,
                     decisions.number(),
                     decisions.below(2),
                     decisions.below(2),
                     decisions.number(),
                     decisions.below(2),
                     decisions.below(2),
                     isRational,
                     u,
                     v,
                     knotsU,
                     knotsV};
    addNumbers(shape, decisions, knotsU + knotsV);
    addValues(shape, decisions, (3 + isRational) * u * v + knotsU + knotsV);
}

/// A curve of any kind, or null. A member of a composite is no composite, as that does not travel.
ShapeDescription randomCurve(Decisions & decisions, bool isMember = false)
{
    constexpr int Kinds[] = {0, 1, 2, 3, 5, 6, 7};
    ShapeDescription shape;
    shape.tag = Kinds[decisions.below(isMember ? 6 : 7)];
    curveKinds.insert(shape.tag);
    if (shape.tag == 0)
        return shape;
    shape.parameterizations = {randomParameterization(decisions)};
    switch (shape.tag) {
    case geom::Curve::Circle:
        addValues(shape, decisions, 10);
        break;
    case geom::Curve::BSplineCurve:
        makeSpline(shape, decisions, 3);
        break;
    case geom::Curve::Ellipse:
        addValues(shape, decisions, 11);
        break;
    case geom::Curve::Line:
        addValues(shape, decisions, 6);
        break;
    case geom::Curve::LineStrip:
        addValues(shape, decisions, 3 * decisions.below(4));
        break;
    default:
        for (int left = decisions.below(5); left > 0; --left)
            shape.inner.push_back(randomCurve(decisions, true));
    }
    return shape;
}

/// A surface of any kind, or null; offsets go on as long as the decisions say so.
ShapeDescription randomSurface(Decisions & decisions)
{
    constexpr int Kinds[] = {0, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12, 5, 5, 5};
    ShapeDescription shape;
    shape.tag = Kinds[decisions.below(14)];
    surfaceKinds.insert(shape.tag);
    if (shape.tag == 0)
        return shape;
    shape.parameterizations = {randomParameterization(decisions),
                               randomParameterization(decisions)};
    switch (shape.tag) {
    case geom::Surface::BSpline:
        makeSplineSurface(shape, decisions);
        break;
    case geom::Surface::Cone:
    case geom::Surface::Torus:
        addValues(shape, decisions, 11);
        break;
    case geom::Surface::Cylinder:
    case geom::Surface::Sphere:
        addValues(shape, decisions, 10);
        break;
    case geom::Surface::Offset:
        addValues(shape, decisions, 1);
        shape.inner = {randomSurface(decisions)};
        break;
    case geom::Surface::Revolution:
        addValues(shape, decisions, 6);
        shape.inner = {randomCurve(decisions)};
        break;
    case geom::Surface::Ruled:
        shape.inner = {randomCurve(decisions), randomCurve(decisions)};
        break;
    case geom::Surface::LinearExtrusion:
        addValues(shape, decisions, 3);
        shape.inner = {randomCurve(decisions)};
        break;
    default:
        addValues(shape, decisions, 9);
    }
    return shape;
}

/// Descriptions of all shapes of a model by the ids of their carriers.
struct Shapes
{
    std::map<int, ShapeDescription> curves;
    std::map<int, ShapeDescription> uvCurves;
    std::map<int, ShapeDescription> surfaces;

    bool operator==(Shapes const &) const = default;
};

Shapes randomShapes(Decisions & decisions)
{
    Shapes shapes;
    while (!decisions.areOver()) {
        int const id = decisions.number();
        switch (decisions.below(4)) {
        case 0:
            makeSpline(shapes.uvCurves[id] = {}, decisions, 2);
            break;
        case 1:
            // No carrier can be made of a curve that is not there.
            if (ShapeDescription curve = randomCurve(decisions); curve.tag != 0)
                shapes.curves[id] = std::move(curve);
            break;
        default:
            shapes.surfaces[id] = randomSurface(decisions);
        }
    }
    return shapes;
}

void makeModel(Shapes const & shapes, ShapeMaker & maker)
{
    for (auto const & [id, shape] : shapes.curves)
        Curve3D::create(id, maker.curve(shape));
    for (auto const & [id, shape] : shapes.uvCurves)
        UVCurve::create(id, ShapeMaker::uvCurve(shape));
    for (auto const & [id, shape] : shapes.surfaces)
        Surface::create(id, maker.surface(shape));
}

Shapes shapesOfModel()
{
    Shapes shapes;
    SubPool & model = currentSubPool();
    model.m_Curves3D.m_Entities.forEach([&](int id, Base * carrier) {
        shapes.curves[id] = describe(static_cast<Curve3D *>(carrier)->getCurve());
    });
    model.m_UVCurves.m_Entities.forEach([&](int id, Base * carrier) {
        shapes.uvCurves[id] = describe(*static_cast<UVCurve *>(carrier)->getCurve());
    });
    model.m_Surfaces.m_Entities.forEach([&](int id, Base * carrier) {
        shapes.surfaces[id] = describe(static_cast<Surface *>(carrier)->getSurface());
    });
    return shapes;
}

/// What a second process finds of a model.
enum Finding : int { Same, Refused, OtherShapes, OtherBytes };

int readInAnotherProcess(std::string const & name, Shapes const & shapes, Bytes const & bytes)
{
    Child reader([&] {
        while (Pool::hasInstance())
            Pool::destruct();
        Pool::construct("arrived");
        Server::readSharedMem(name, static_cast<long long>(bytes.size()));
        if (!Server::exchangeFailure().empty())
            return Refused;
        if (!(shapesOfModel() == shapes))
            return OtherShapes;
        std::string const again = name + " again";
        Server::writeSharedMem(again);
        bool const isSame = segmentBytes(again) == bytes;
        Server::unmapSharedMemory(true);
        return isSame ? Same : OtherBytes;
    });
    return reader.wait();
}

void travels(std::vector<std::uint64_t> const & list)
{
    Decisions decisions(list);
    Shapes const shapes = randomShapes(decisions);
    ShapeMaker maker;
    makeModel(shapes, maker);
    bool const isAsDescribed = shapesOfModel() == shapes;
    std::string const name = segmentName();
    long long const size = Pool::getInstance()->getSize();
    long long const written = Server::writeSharedMem(name);
    Bytes const bytes = segmentBytes(name);
    int const finding = readInAnotherProcess(name, shapes, bytes);
    Server::unmapSharedMemory(false);
    currentSubPool().clear();
    RC_ASSERT(isAsDescribed);
    RC_ASSERT(size == written);
    RC_ASSERT(static_cast<long long>(bytes.size()) == size);
    RC_ASSERT(finding == Same);
}

TEST_F(GeometryStream, AnyGeometryArrivesInAnotherProcessBitForBit)
{
    // The same models in every run, unless the one who runs it asks for others.
    char const * const asked = std::getenv("RC_PARAMS");
    ScopedEnvironment const parameters("RC_PARAMS",
                                       asked != nullptr ? asked : "seed=20 max_success=300");
    constexpr double DecisionsPerSize = 8;
    EXPECT_TRUE(rc::check("geometry travels bit for bit", [] {
        travels(
            *rc::gen::scale(DecisionsPerSize, rc::gen::arbitrary<std::vector<std::uint64_t>>()));
    }));
    EXPECT_EQ(curveKinds, (std::set<int>{0, 1, 2, 3, 5, 6, 7}));
    EXPECT_EQ(surfaceKinds, (std::set<int>{0, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12}));
}

} // namespace
} // namespace transl_tk
