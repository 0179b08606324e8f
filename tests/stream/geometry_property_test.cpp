#include "stream/geometry_stream.h"
#include "stream/random_decisions.h"
#include "stream/random_shapes.h"
#include "support/child.h"

#include <cstdint>
#include <cstdlib>

namespace transl_tk {
namespace {

using namespace tests;

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
    makeShapes(shapes, maker);
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
    EXPECT_TRUE(rc::check("geometry travels bit for bit", [] { travels(*manyDecisions(8)); }));
    EXPECT_EQ(curveKinds, (std::set<int>{0, 1, 2, 3, 5, 6, 7}));
    EXPECT_EQ(surfaceKinds, (std::set<int>{0, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12}));
}

} // namespace
} // namespace transl_tk
