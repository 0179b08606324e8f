#include "stream/topology_stream.h"

#include <climits>

namespace transl_tk {
namespace {

using namespace tests;

/// The id of everything that the model holds before a stream is read.
constexpr int Old = 100;

/// A stream is read into a model that holds something of every kind; nothing of it refers to
/// anything else, so that the carriers have no users.
class HostileTopology : public TopologyStream
{
protected:
    HostileTopology()
    {
        fill();
        m_Before = idsOfModel();
        m_SizeBefore = Pool::getInstance()->getSize();
    }

    static void fill()
    {
        float const corner[3] = {1, 2, 3};
        TriStrip::create(Old, corner, nullptr, 1, nullptr, 0, nullptr, 0, false);
        makeCurve(Old);
        makeUVCurve(Old);
        makeSurface(Old);
        makeVertex(Old);
        Edge::create(Old, nullptr, nullptr, nullptr, true);
        Fin::create(Old, nullptr, true);
        Loop::create(Old);
        Face::create(Old, nullptr);
        Shell::create(Old);
        Body::create(Old, "old");
    }

    /// Expects that the reading has failed with the usual sentence, and for `reason`.
    void expectRefusal(std::string const & reason) const
    {
        std::string const sentence = Server::exchangeFailure();
        EXPECT_EQ(sentence.find("The model stream is not sound: section "), 0U) << sentence;
        EXPECT_NE(sentence.find("), record "), std::string::npos) << sentence;
        EXPECT_NE(sentence.find(", byte "), std::string::npos) << sentence;
        EXPECT_NE(sentence.find(reason), std::string::npos) << sentence;
        expectUnchanged();
    }

    void expectUnchanged() const
    {
        EXPECT_EQ(idsOfModel(), m_Before);
        EXPECT_EQ(Pool::getInstance()->getSize(), m_SizeBefore);
    }

    void expectRefused(Bytes const & stream, std::string const & reason)
    {
        read(stream);
        expectRefusal(reason);
    }

    using Sections = std::map<int, std::vector<ByteString>>;

    void expectRefused(Sections const & sections, std::string const & reason)
    {
        expectRefused(records::model(sections), reason);
    }

    /// The same, and that the rest of the model works: an edge, fin and face that are made on its
    /// carriers free them at their end, as their only users.
    void expectRefusedAndCarriersFree(Sections const & sections, std::string const & reason)
    {
        expectRefused(sections, reason);
        Vertex * const both = vertex(Old);
        Edge::destruct(Edge::create(1, carrierOfCurve(Old), both, both, true));
        EXPECT_EQ(carrierOfCurve(Old), nullptr);
        EXPECT_EQ(vertex(Old), nullptr);
        Fin::destruct(Fin::create(1, edge(Old), true));
        EXPECT_EQ(edge(Old), nullptr);
        Face::destruct(Face::create(1, carrierOfSurface(Old)));
        EXPECT_EQ(carrierOfSurface(Old), nullptr);
    }

    std::vector<std::set<int>> m_Before;
    long long m_SizeBefore = 0;
};

ByteString uvCarrier(int id)
{
    return ByteString().i32(id).i32(3).raw(records::uvCurve());
}

ByteString fullStrip(int id)
{
    ByteString record;
    record.i32(id).u8(1).i32(2).raw(records::f32({1, 2, 3, 4, 5, 6}));
    record.i32(2).u8(1).u8(2).u8(3).u8(4).u8(5).u8(6);
    record.i32(1).raw(records::f32({7, 8, 9}));
    return record.raw(records::ids({0, 1, 0}));
}

/// A sound stream with facets, topology, and what it stands on. Parts of it use the model that is
/// there: an edge its curve and vertex, a fin its edge, a face its surface.
std::map<int, std::vector<ByteString>> sound()
{
    using namespace records;
    return {
        {Facets, {fullStrip(1), bareStrip(2)}},
        {Curves, {carried(1, line())}},
        {UVCurves, {uvCarrier(1)}},
        {Surfaces, {carried(1, plane())}},
        {Vertices, {records::vertex(1, {1, 2, 3}), records::vertex(2, 0.5)}},
        {Edges, {records::edge(1, 1, 1, 2), records::edge(2, Old, Old, 1)}},
        {Fins, {records::fin(1, 1, 1), records::fin(2, 2), records::fin(3, Old)}},
        {Loops, {records::loop(1, {1, 3}), records::loop(2, {2})}},
        {Faces, {records::face(1, "label", true, 1, {1, 2}), records::face(2, "", true, Old, {})}},
        {Shells, {records::shell(1, true, {1, 2})}},
        {Bodies, {records::body(1, "name", {1}, {1, 2})}}};
}

/// Sound up to the very end, where a count of the log cannot be.
std::map<int, std::vector<ByteString>> failingAtTheEnd()
{
    auto sections = sound();
    sections[27] = {ByteString()};
    return sections;
}

TEST_F(HostileTopology, TheStreamOfTheTestsIsSound)
{
    read(records::model(sound()));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(idsOf(body(1), &Body::forEachShell), (std::vector{1}));
    EXPECT_EQ(edge(2)->getCurve(), carrierOfCurve(Old));
}

TEST_F(HostileTopology, AStreamIsRefusedWhereverItIsCut)
{
    Bytes const whole = records::model(sound());
    for (std::size_t size = 1; size < whole.size() && !HasFailure(); ++size)
        expectRefused(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)), "");
}

TEST_F(HostileTopology, NoByteWhateverItsValueHarmsTheReader)
{
    Bytes const whole = records::model(sound());
    int refused = 0;
    int accepted = 0;
    for (std::size_t at = 0; at < whole.size() && !HasFailure(); ++at)
        for (int const value : {0x00, 0xFF, whole[at] + 1, whole[at] ^ 0x80, Old}) {
            Bytes stream = whole;
            stream[at] = static_cast<unsigned char>(value);
            read(stream);
            if (!Server::exchangeFailure().empty()) {
                expectRefusal("");
                ++refused;
                continue;
            }
            ++accepted;
            // Whatever has been made can be asked for, written, and freed.
            Pool::getInstance()->getSize();
            currentSubPool().clear();
            EXPECT_EQ(idsOfModel(), std::vector<std::set<int>>(std::size(EveryStore)));
            fill();
        }
    EXPECT_GT(refused, 500);
    EXPECT_GT(accepted, 500);
}

TEST_F(HostileTopology, AStreamThatFailsBehindTheTopologyLeavesNoUserOfTheOldCarriers)
{
    expectRefusedAndCarriersFree(failingAtTheEnd(), "section 23 (log entries)");
}

TEST_F(HostileTopology, AStreamThatFailsAmidTheTopologyLeavesNoUserOfTheOldCarriers)
{
    for (int const section : {Edges, Fins, Loops, Faces, Shells, Bodies}) {
        currentSubPool().clear();
        fill();
        auto sections = sound();
        sections[section].push_back(ByteString());
        for (int behind = section + 1; behind <= 27; ++behind)
            sections.erase(behind);
        Bytes stream = records::model(sections);
        // Only the counts behind the section are left, which are not enough for a record.
        stream.resize(stream.size() - 4 * static_cast<std::size_t>(27 - section));
        read(stream);
        expectRefusal("section " + std::to_string(section) + " ");
        Edge::destruct(Edge::create(1, carrierOfCurve(Old), vertex(Old), nullptr, true));
        EXPECT_EQ(carrierOfCurve(Old), nullptr);
        EXPECT_EQ(vertex(Old), nullptr);
    }
}

TEST_F(HostileTopology, OldCarriersWithUsersKeepThemWhenAStreamFails)
{
    Vertex * const both = vertex(Old);
    Edge * const user = Edge::create(Old + 1, carrierOfCurve(Old), both, both, true);
    Face * const face = Face::create(Old + 1, carrierOfSurface(Old));
    m_Before = idsOfModel();
    m_SizeBefore = Pool::getInstance()->getSize();
    expectRefused(failingAtTheEnd(), "section 23 (log entries)");
    EXPECT_EQ(user->getCurve(), carrierOfCurve(Old));
    Edge::destruct(Edge::create(1, carrierOfCurve(Old), both, both, true));
    EXPECT_NE(carrierOfCurve(Old), nullptr);
    Edge::destruct(user);
    EXPECT_EQ(carrierOfCurve(Old), nullptr);
    EXPECT_EQ(vertex(Old), nullptr);
    Face::destruct(face);
    EXPECT_EQ(carrierOfSurface(Old), nullptr);
}

TEST_F(HostileTopology, AfterARefusalTheSameIdsCanBeReadAgain)
{
    expectRefused(failingAtTheEnd(), "section 23 (log entries)");
    read(records::model(sound()));
    EXPECT_EQ(Server::exchangeFailure(), "");
    Body::destruct(body(1));
    EXPECT_EQ(carrierOfCurve(1), nullptr);
    EXPECT_EQ(carrierOfCurve(Old), nullptr);
    EXPECT_EQ(carrierOfSurface(Old), nullptr);
}

TEST_F(HostileTopology, CountsThatCannotBeAreRefused)
{
    auto const most = [](ByteString record) { return record.i32(INT_MAX); };
    auto const needs = [](long long least) {
        return "a count of 2147483647 needs at least " + std::to_string(least * INT_MAX) + " bytes";
    };
    ByteString const strip = ByteString().i32(1).u8(0);
    expectRefused({{Facets, {most(strip)}}}, needs(12));
    expectRefused({{Facets, {most(ByteString(strip).i32(0).i32(0))}}}, needs(12));
    expectRefused({{Facets, {most(ByteString(strip).i32(0).i32(0).i32(0))}}}, needs(4));
    expectRefused({{Loops, {most(ByteString().i32(1))}}}, needs(4));
    expectRefused({{Faces, {most(ByteString().i32(1))}}}, needs(1));
    expectRefused({{Faces, {most(ByteString().i32(1).text("").u8(0).i32(-1))}}}, needs(4));
    expectRefused({{Shells, {most(ByteString().i32(1).u8(0))}}}, needs(4));
    expectRefused({{Bodies, {most(ByteString().i32(1))}}}, needs(1));
    expectRefused({{Bodies, {most(ByteString().i32(1).text(""))}}}, needs(4));
    expectRefused({{Bodies, {most(ByteString().i32(1).text("").i32(0))}}}, needs(4));
}

TEST_F(HostileTopology, ColoursThatAreNotThereAreRefused)
{
    ByteString record;
    record.i32(1).u8(0).i32(100).zeros(1200).i32(1);
    Bytes stream = records::model({{Facets, {record}}});
    expectRefused(stream, "section 1 (facets), record 1, byte 1217: a count of 300 needs at least "
                          "300 bytes, and 104 are left.");
}

TEST_F(HostileTopology, NegativeCountsReadAsNone)
{
    currentSubPool().clear();
    read(records::model({{Loops, {ByteString().i32(1).i32(-1)}},
                         {Faces, {ByteString().i32(1).i32(INT_MIN).u8(1).i32(-1).i32(-1)}},
                         {Shells, {ByteString().i32(1).u8(1).i32(INT_MIN)}},
                         {Bodies, {ByteString().i32(1).i32(-1).i32(-1).i32(-1)}}}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(records::model({{Loops, {records::loop(1, {})}},
                                    {Faces, {records::face(1, "", true, -1, {})}},
                                    {Shells, {records::shell(1, true, {})}},
                                    {Bodies, {records::body(1, "", {}, {})}}}));
}

TEST_F(HostileTopology, SomethingWithTwoParentsIsRefused)
{
    auto sections = sound();
    sections[Loops] = {records::loop(1, {1, 3}), records::loop(2, {2, 1})};
    expectRefusedAndCarriersFree(sections, ": the fin 1 has an owner already.");
}

TEST_F(HostileTopology, EveryKindWithTwoParentsIsRefused)
{
    using namespace records;
    auto const refuse = [this](int section, std::vector<ByteString> const & records,
                               std::string const & reason) {
        auto sections = sound();
        sections[section] = records;
        expectRefused(sections, reason);
    };
    refuse(Fins, {records::fin(1, 1, 1), records::fin(2, 1, 1), records::fin(3, -1)},
           "section 10 (fins), record 2, byte ");
    EXPECT_NE(Server::exchangeFailure().find(": the UV curve 1 has an owner already."),
              std::string::npos);
    refuse(Loops, {records::loop(1, {1, 2, 1})}, "section 11 (loops), record 1, byte ");
    EXPECT_NE(Server::exchangeFailure().find(": the fin 1 has an owner already."),
              std::string::npos);
    refuse(Faces, {records::face(1, "", true, 1, {2}), records::face(2, "", true, 1, {1, 2})},
           ": the loop 2 has an owner already.");
    refuse(Faces, {records::face(1, "", true, 1, {2, 2})}, ": the loop 2 has an owner already.");
    refuse(Shells, {records::shell(1, true, {1}), records::shell(2, true, {1})},
           "section 13 (shells), record 2, byte ");
    refuse(Shells, {records::shell(1, true, {2, 2})}, ": the face 2 has an owner already.");
    refuse(Bodies, {records::body(1, "", {1}, {}), records::body(2, "", {1}, {})},
           ": the shell 1 has an owner already.");
    refuse(Bodies, {records::body(1, "", {1}, {1}), records::body(2, "", {}, {2, 1})},
           ": the facets 1 has an owner already.");
    refuse(Bodies, {records::body(1, "", {1}, {2, 2})}, ": the facets 2 has an owner already.");
}

TEST_F(HostileTopology, TheSentenceNamesTheByteBehindTheIdThatHasAnOwner)
{
    // Counts of ten sections (40), one fin (13) and the count of loops (4), two records of loops of
    // one fin each (12).
    expectRefused(
        {{Fins, {records::fin(7, -1)}}, {Loops, {records::loop(1, {7}), records::loop(2, {7})}}},
        "The model stream is not sound: section 11 (loops), record 2, byte 81: the fin 7 "
        "has an owner already.");
}

TEST_F(HostileTopology, AListThatNamesSomethingOfTheOldModelIsRefused)
{
    auto const refuse = [this](int section, ByteString const & record, std::string const & words) {
        auto sections = sound();
        sections[section].push_back(record);
        expectRefused(sections, ": the " + words + " 100 is not of this stream.");
    };
    refuse(Fins, records::fin(9, -1, Old), "UV curve");
    refuse(Loops, records::loop(9, {Old}), "fin");
    refuse(Faces, records::face(9, "", true, -1, {Old}), "loop");
    refuse(Shells, records::shell(9, true, {Old}), "face");
    refuse(Bodies, records::body(9, "", {Old}, {}), "shell");
    refuse(Bodies, records::body(9, "", {}, {Old}), "facets");
}

TEST_F(HostileTopology, IdsRoundThoseOfTheOldModelAreTheStreams)
{
    // The old fin 100 stands amid the ids of the stream, which come in no order.
    std::vector<ByteString> fins;
    for (int const id : {101, 99, 102, 98, -5, INT_MAX, INT_MIN})
        fins.push_back(records::fin(id, -1));
    std::vector<int> const own = {98, 99, 101, 102, -5, INT_MIN, INT_MAX};
    read(records::model({{Fins, fins}, {Loops, {records::loop(1, own)}}}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(idsOf(loop(1), &Loop::forEachFin), own);
    Loop::destruct(loop(1));
    expectUnchanged();
    expectRefused({{Fins, fins}, {Loops, {records::loop(1, {99, 100, 101})}}},
                  ": the fin 100 is not of this stream.");
}

TEST_F(HostileTopology, AnIdThatIsTakenStopsTheReadingWhereTheEntityIsNeeded)
{
    auto const refuse = [this](int section, std::vector<ByteString> const & records, int id) {
        auto sections = sound();
        sections[section].insert(sections[section].end(), records.begin(), records.end());
        expectRefused(sections, ": the id " + std::to_string(id) + " is taken.");
    };
    for (int const id : {1, Old}) {
        refuse(Fins, {records::fin(id, -1)}, id);
        refuse(Loops, {records::loop(id, {})}, id);
        refuse(Faces, {records::face(id, "", true, -1, {})}, id);
        refuse(Shells, {records::shell(id, true, {})}, id);
        refuse(Bodies, {records::body(id, "", {}, {})}, id);
    }
}

TEST_F(HostileTopology, AVertexEdgeOrStripWhoseIdIsTakenIsSkipped)
{
    auto sections = sound();
    sections[Facets].push_back(fullStrip(2));
    sections[Facets].push_back(fullStrip(Old));
    sections[Vertices].push_back(records::vertex(1, {7, 8, 9}));
    sections[Vertices].push_back(records::vertex(Old, {7, 8, 9}));
    sections[Vertices].push_back(records::vertex(Old, 0.75));
    sections[Edges].push_back(records::edge(1, -1, -1, -1));
    sections[Edges].push_back(records::edge(Old, 1, 1, 1));
    currentSubPool().clear();
    fill();
    read(records::model(sound()));
    long long const size = Pool::getInstance()->getSize();
    currentSubPool().clear();
    fill();
    read(records::model(sections));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(Pool::getInstance()->getSize(), size);
    EXPECT_EQ(edge(1)->getCurve(), carrierOfCurve(1));
    EXPECT_EQ(edge(Old)->getCurve(), nullptr);
    // The edges that were not made use nothing.
    Body::destruct(body(1));
    EXPECT_EQ(carrierOfCurve(1), nullptr);
    EXPECT_EQ(vertex(1), nullptr);
}

TEST_F(HostileTopology, AnOldStripWhoseIdTheStreamRepeatsIsNotTheStreams)
{
    expectRefused(
        {{Facets, {records::bareStrip(Old)}}, {Bodies, {records::body(1, "", {}, {Old})}}},
        ": the facets 100 is not of this stream.");
}

TEST_F(HostileTopology, ReadingAStreamTwiceIsRefusedAndLeavesTheFirst)
{
    Bytes const stream = records::model(sound());
    read(stream);
    EXPECT_EQ(Server::exchangeFailure(), "");
    m_Before = idsOfModel();
    m_SizeBefore = Pool::getInstance()->getSize();
    expectRefused(stream, ": the UV curve 1 is not of this stream.");
    Body::destruct(body(1));
    EXPECT_EQ(carrierOfCurve(1), nullptr);
    EXPECT_EQ(vertex(1), nullptr);
}

} // namespace
} // namespace transl_tk
