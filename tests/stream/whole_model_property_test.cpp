#include "stream/product_stream.h"
#include "stream/random_decisions.h"
#include "stream/random_whole_model.h"
#include "support/child.h"

#include <algorithm>
#include <cstdlib>

namespace transl_tk {
namespace {

using namespace tests;
using Whole = WholeModelDescription;

std::uint64_t bits(double value)
{
    return std::bit_cast<std::uint64_t>(value);
}

/// Whether an attribute that hangs on an entity still does so on the other side.
bool arrives(Whole::Reference const & reference)
{
    return reference.second != EntityKindUVCurve;
}

/// The same for a node of a part: it is read before instances and before the parts of higher
/// ids.
bool arrives(Whole::Reference const & reference, Whole const & model, int part)
{
    auto const & [id, kind] = reference;
    bool const isThere = kind != EntityKindHierarchy || model.assemblies.contains(id) ||
                         (model.parts.contains(id) && id <= part);
    return isThere && arrives(reference);
}

/// What a model tells after it has arrived.
Whole arrivedFrom(Whole const & made)
{
    Whole arrived = made;
    auto const shape = [](Whole::Component & component) {
        component.angularType = component.lengthType;
    };
    auto const place = [&](int id, Whole::Hierarchy & hierarchy) {
        hierarchy.parent = -1;
        for (auto const & [parent, assembly] : arrived.assemblies)
            if (std::count(assembly.children.begin(), assembly.children.end(), id) != 0)
                hierarchy.parent = parent;
        constexpr double Identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        bool isIdentity = true;
        for (std::size_t i = 0; i < 16; ++i)
            isIdentity = isIdentity && std::bit_cast<double>(hierarchy.transform[i]) == Identity[i];
        if (isIdentity)
            std::transform(std::begin(Identity), std::end(Identity), hierarchy.transform.begin(),
                           bits);
    };
    for (auto & [id, assembly] : arrived.assemblies) {
        shape(assembly.component);
        place(id, assembly.component.hierarchy);
    }
    for (auto & [id, part] : arrived.parts) {
        shape(part.component);
        place(id, part.component.hierarchy);
        for (auto & [node, described] : part.nodes)
            std::erase_if(described.entities, [&, holder = id](auto const & each) {
                return !arrives(each, made, holder);
            });
    }
    for (auto & [id, instance] : arrived.instances)
        place(id, instance.hierarchy);
    for (Whole::Attribute & attribute : arrived.attributes)
        std::erase_if(attribute.entities, [](auto const & each) { return !arrives(each); });
    arrived.log[5].clear();
    arrived.nodesOfSeveralParts = 0;
    return arrived;
}

/// Bytes of the references that are written and lead to nothing.
long long bytesLeftBehind(Whole const & made)
{
    constexpr long long BytesOfReference = 8;
    long long lost = 0;
    for (auto const & [id, part] : made.parts)
        for (auto const & [node, described] : part.nodes)
            for (Whole::Reference const & each : described.entities)
                lost += !arrives(each, made, id);
    for (Whole::Attribute const & attribute : made.attributes)
        for (Whole::Reference const & each : attribute.entities)
            lost += !arrives(each);
    return lost * BytesOfReference;
}

/// What a second process finds of a model.
enum Finding : int { Same, Refused, OtherModel, OtherSize, OtherBytes, NotEmptied };

void empty()
{
    currentSubPool().clear();
    currentSubPool().m_TextList.clear();
    currentSubPool().m_FacesToSplit.clear();
}

/// Reads `bytes` and gives those that the model is written as then.
Bytes bytesThatArriveAs(std::string const & name, Bytes const & bytes)
{
    {
        ScopedSegment const segment(name, bytes);
        Server::readSharedMem(name, static_cast<long long>(bytes.size()));
    }
    Server::writeSharedMem(name);
    Bytes written = segmentBytes(name);
    Server::unmapSharedMemory(true);
    return written;
}

/// The bytes that the second process writes are those that it has read, but for references that
/// lead to nothing there, as those to UV curves do: a model that has them arrives without, and is
/// shorter then. What it writes does not change any more when it is read.
///
/// The angular type is no exception, though it arrives as another: neither side writes it. And the
/// order of an attribute's entities, which nothing promises, is kept.
int readInAnotherProcess(std::string const & name, Bytes const & bytes, Whole const & expected,
                         long long leftBehind)
{
    Child reader([&] {
        while (Pool::hasInstance())
            Pool::destruct();
        Pool::construct("arrived");
        auto const size = static_cast<long long>(bytes.size());
        Server::readSharedMem(name, size);
        if (!Server::exchangeFailure().empty())
            return Refused;
        if (!(descriptionOfWholeModel() == expected))
            return OtherModel;
        std::string const again = name + " again";
        bool const isAsLong = Server::writeSharedMem(again) == size - leftBehind;
        Bytes const second = segmentBytes(again);
        bool const isSame = leftBehind != 0 || second == bytes;
        Server::unmapSharedMemory(true);
        empty();
        if (idsOfModel() != std::vector<std::set<int>>(std::size(EveryStore)) ||
            !currentSubPool().m_Names.empty() || !currentSubPool().m_Attributes.empty())
            return NotEmptied;
        std::string const third = name + " third";
        bool const isSameAgain = bytesThatArriveAs(third, second) == second;
        return !isAsLong ? OtherSize : isSame && isSameAgain ? Same : OtherBytes;
    });
    return reader.wait();
}

void travels(std::vector<std::uint64_t> const & list)
{
    ShapeMaker shapes;
    Whole const made = makeRandomWholeModel(list, shapes);
    long long const size = Pool::getInstance()->getSize();
    bool const isAsDescribed = descriptionOfWholeModel() == made;
    std::string const name = segmentName();
    long long const written = Server::writeSharedMem(name);
    Bytes const bytes = segmentBytes(name);
    int const finding = readInAnotherProcess(name, bytes, arrivedFrom(made), bytesLeftBehind(made));
    Server::unmapSharedMemory(false);
    empty();
    RC_ASSERT(isAsDescribed);
    RC_ASSERT(idsOfModel() == std::vector<std::set<int>>(std::size(EveryStore)));
    RC_ASSERT(size == written);
    RC_ASSERT(static_cast<long long>(bytes.size()) == size);
    RC_ASSERT(finding == Same);
}

std::set<std::string> everyFeature()
{
    std::set<std::string> all = {"assembly in an assembly",
                                 "attribute on a dead point",
                                 "negative zero in an identity",
                                 "node in several places",
                                 "node of several parts",
                                 "node on a dead point",
                                 "numbered name",
                                 "removed child",
                                 "transform",
                                 "two children with one number"};
    for (int kind = 1; kind <= 16; ++kind)
        all.insert("hangs on kind " + std::to_string(kind));
    for (int list = 0; list < 8; ++list)
        all.insert("part's list " + std::to_string(list));
    for (int list = 1; list <= 6; ++list)
        all.insert("log entry of type " + std::to_string(list));
    return all;
}

TEST_F(ProductStream, AnyWholeModelArrivesInAnotherProcessValueByValueAndByteByByte)
{
    // The same models in every run, unless the one who runs it asks for others.
    char const * const asked = std::getenv("RC_PARAMS");
    ScopedEnvironment const parameters("RC_PARAMS",
                                       asked != nullptr ? asked : "seed=5 max_success=300");
    EXPECT_TRUE(rc::check("a whole model arrives", [] { travels(*manyDecisions(40)); }));
    if (asked == nullptr) {
        EXPECT_EQ(featuresOfWholeModels, everyFeature());
    }
}

} // namespace
} // namespace transl_tk
