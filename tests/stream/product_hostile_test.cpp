#include "stream/product_stream.h"
#include "stream/whole_stream.h"

#include <keld-transl/reporting/html_logger_entry.h>
#include <keld-transl/reporting/logger_policy.h>

#include <climits>
#include <map>
#include <random>
#include <unordered_set>

namespace transl_tk {
namespace {

using namespace tests;

/// All that a refusal must leave alone.
struct Snapshot
{
    std::vector<std::map<int, Base *>> entities;
    std::vector<Attribute *> attributes;
    std::vector<HtmlLoggerEntry *> reportEntries;
    std::unordered_set<std::string> names;
    std::vector<std::string> texts;
    std::vector<int> facesToSplit;
    std::vector<std::string> log;
    Bytes bytes;

    bool operator==(Snapshot const &) const = default;
};

Bytes bytesOfModel()
{
    std::string const name = segmentName();
    Server::writeSharedMem(name);
    Bytes bytes = segmentBytes(name);
    Server::unmapSharedMemory(false);
    return bytes;
}

Snapshot snapshot()
{
    SubPool & model = currentSubPool();
    Snapshot taken;
    for (auto const store : EveryStore) {
        auto & table = taken.entities.emplace_back();
        (model.*store).m_Entities.forEach([&](int id, Base * entity) { table[id] = entity; });
    }
    taken.attributes = model.m_Attributes;
    taken.reportEntries = model.m_LoggerEntries;
    taken.names = model.m_Names;
    taken.texts = model.m_TextList;
    taken.facesToSplit = model.m_FacesToSplit;
    for (int list = 1; list <= 6; ++list)
        taken.log.push_back(
            model._logger()->GetEntriesOfType(list, cad::ILoggerPolicy::Any, false, false));
    taken.bytes = bytesOfModel();
    return taken;
}

class HostileProduct : public ProductStream
{
protected:
    HostileProduct() { prepare(); }

    /// Something of every kind, with ids from 100 on, which no stream here uses.
    void prepare()
    {
        currentSubPool().clear();
        currentSubPool().m_TextList = {"kept"};
        currentSubPool().m_FacesToSplit = {100};
        Part * const part = Part::create(100, "part");
        Assembly * const top = Assembly::create(101, "top");
        top->addChild(part);
        top->addChild(Instance::create(102, part));
        part->addPoint(Point3D::create(100, 1, 2, 3));
        part->addAnnotation(makeAnnotation(100));
        part->addTriStrip(makeStrip(100));
        part->addBody(Body::create(100, ""));
        part->getNodeTree()->addNode(Leaf::create(1));
        Attribute * const attribute = Attribute::create("kept", Attribute::Comment);
        attribute->addEntity(part);
        attribute->addValue(7);
        HtmlLoggerEntry::create("kept", HtmlLoggerEntry::Part, HtmlLoggerEntry::EntryType{});
        currentSubPool()._logger()->addEntry("kept", 6);
        m_Before = snapshot();
    }

    static void startEmpty()
    {
        currentSubPool().clear();
        currentSubPool().m_TextList.clear();
        currentSubPool().m_FacesToSplit.clear();
    }

    /// Reads `stream` and expects that it is refused for `reason` and that all is as it was.
    void expectRefused(Bytes const & stream, std::string const & reason)
    {
        read(stream);
        EXPECT_NE(Server::exchangeFailure().find(reason), std::string::npos)
            << Server::exchangeFailure();
        expectUnchanged();
    }

    void expectUnchanged() { EXPECT_TRUE(snapshot() == m_Before); }

    Snapshot m_Before;
};

TEST_F(HostileProduct, AStreamWithEverySectionIsRefusedWhereverItIsCut)
{
    Bytes const whole = wholeStream();
    for (std::size_t size = 1; size < whole.size() && !HasFailure(); ++size)
        expectRefused(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)),
                      "The model stream is not sound: section ");
    read(whole);
    EXPECT_EQ(Server::exchangeFailure(), "");
}

TEST_F(HostileProduct, AStreamWithEverySectionTravelsAsItIs)
{
    startEmpty();
    read(wholeStream());
    EXPECT_EQ(Server::exchangeFailure(), "");
    for (auto const store : EveryStore)
        EXPECT_NE(countOf(store), 0U);
    expectWrittenAs(wholeStream());
}

TEST_F(HostileProduct, NoFlippedBitHarmsTheReader)
{
    Bytes const sound = wholeStream();
    for (std::size_t place = 0; place < sound.size() && !HasFailure(); ++place) {
        Bytes stream = sound;
        stream[place] ^= static_cast<unsigned char>(1U << place % 8);
        read(stream);
        if (Server::exchangeFailure().empty()) {
            EXPECT_GT(Pool::getInstance()->getSize(), 0);
            prepare();
        }
        expectUnchanged();
    }
}

TEST_F(HostileProduct, NoRandomBytesHarmTheReader)
{
    std::mt19937 random(17);
    Bytes const sound = wholeStream();
    for (int round = 0; round < 2000 && !HasFailure(); ++round) {
        Bytes stream = sound;
        for (auto changes = 1 + random() % 6; changes != 0; --changes)
            stream[random() % stream.size()] = static_cast<unsigned char>(random());
        read(stream);
        if (Server::exchangeFailure().empty()) {
            EXPECT_GT(Pool::getInstance()->getSize(), 0);
            prepare();
        }
        expectUnchanged();
    }
}

TEST_F(HostileProduct, CountsThatCannotBeAreRefused)
{
    auto const needs = [](long long least) {
        return "a count of 2147483647 needs at least " + std::to_string(least * INT_MAX) + " bytes";
    };
    auto const refused = [&](int section, ByteString record, long long least) {
        expectRefused(records::model(section, {record.i32(INT_MAX).zeros(100)}), needs(least));
    };
    refused(Annotations, ByteString().i32(1).zeros(96), 24);
    refused(Annotations, ByteString().i32(1).zeros(96 + 4 + 68), 1);

    ByteString const assembly = ByteString().i32(1).zeros(12).raw(records::millimetres());
    refused(Assemblies, ByteString().i32(1), 1);
    refused(Assemblies, ByteString(assembly).u8(1), 4);

    ByteString const part = ByteString().i32(1).zeros(16).raw(records::millimetres());
    refused(Parts, part, 4);
    for (std::size_t list = 0; list < 8; ++list)
        refused(Parts, ByteString(part).i32(0).u8(1).zeros(4 * list), 4);
    ByteString const branch = ByteString(part).i32(1).i32(7).i32(1).i32(0);
    refused(Parts, branch, 1);
    refused(Parts, ByteString(branch).i32(0), 4);
    refused(Parts, ByteString(branch).i32(0).i32(0), 4);
    refused(Parts, ByteString(branch).i32(0).i32(0).i32(0), 8);
    ByteString const leaf = ByteString(part).i32(1).i32(7).i32(2);
    refused(Parts, leaf, 8);
    refused(Parts, ByteString(leaf).i32(1).i32(0), 4);

    refused(Attributes, ByteString(), 1);
    refused(Attributes, ByteString().i32(0).i32(0), 4);
    refused(Attributes, ByteString().i32(0).i32(0).i32(0), 4);
    refused(Attributes, ByteString().i32(0).i32(0).i32(1).i32(1), 1);
    refused(ReportEntries, ByteString(), 1);
}

TEST_F(HostileProduct, SentenceNamesSectionRecordAndByte)
{
    Bytes stream =
        records::model(Instances, {records::instance(1, 100), records::instance(2, 101)});
    // 17 counts, that of the instances, and nine bytes for each; one is missing.
    stream.resize(68 + 4 + 9 + 8);
    expectRefused(stream, "section 18 (instances), record 0, byte 72: a count of 2 needs at least "
                          "18 bytes, and 17 are left.");
    Bytes attributes = records::model(Attributes, {records::attribute("name", 1, {}, {})});
    attributes.resize(72 + 4 + 8 + 4 + 4 + 2);
    expectRefused(attributes, "section 19 (attributes), record 1, byte 92: a field of 4 bytes "
                              "runs past the end, 2 bytes are left.");
}

TEST_F(HostileProduct, AnInstanceWithoutAComponentStopsTheReading)
{
    expectRefused(records::model(Instances, {records::instance(1, 77)}),
                  "section 18 (instances), record 1, byte 80: the instance 1 places the component "
                  "77, which is not there.");
    expectRefused(records::model(Instances, {records::instance(1, -1)}),
                  "places the component -1, which is not there");
}

TEST_F(HostileProduct, AnInstanceOfAnInstanceStopsTheReading)
{
    expectRefused(records::model({{Parts, {records::part(3, "p")}},
                                  {Instances, {records::instance(1, 3), records::instance(2, 1)}}}),
                  "section 18 (instances), record 2");
    expectRefused(records::model(Instances, {records::instance(1, 1)}),
                  "the instance 1 places the component 1, which is not there");
    expectRefused(records::model(Instances, {records::instance(1, 102)}),
                  "the instance 1 places the component 102, which is not there");
}

TEST_F(HostileProduct, AnInstanceOfWhatWasThereGoesAgainWithARefusal)
{
    Bytes stream = records::model(Instances, {records::instance(1, 100)});
    stream.resize(stream.size() - 1);
    expectRefused(stream, "section 23");
    EXPECT_EQ(childrenOf<Component>(part(100), &Component::forEachInstance).size(), 1U);
}

TEST_F(HostileProduct, AnAssemblyThatIsItsOwnDescendantIsRefused)
{
    for (auto const & assemblies : {
             std::vector{records::assembly(1, "", {1})},
             std::vector{records::assembly(1, "", {2}), records::assembly(2, "", {1})},
             std::vector{records::assembly(1, "", {2}), records::assembly(2, "", {3}),
                         records::assembly(3, "", {4, 2})},
         })
        expectRefused(records::model(Assemblies, assemblies), " is its own descendant.");
}

TEST_F(HostileProduct, AnAssemblyUnderTwoOthersIsNoRing)
{
    Bytes const stream =
        records::model(Assemblies, {records::assembly(1, "a", {2, 3}),
                                    records::assembly(2, "b", {3}), records::assembly(3, "c", {})});
    read(stream);
    EXPECT_EQ(Server::exchangeFailure(), "");
    // A node has one parent: the last one that takes it.
    EXPECT_EQ(childIds(assembly(1)), (std::vector<int>{2}));
    EXPECT_EQ(childIds(assembly(2)), (std::vector<int>{3}));
}

TEST_F(HostileProduct, AnInstanceOfTheAssemblyThatHoldsItIsNoRingOfChildren)
{
    startEmpty();
    Bytes const stream = records::model({{Assemblies, {records::assembly(1, "a", {2, 2})}},
                                         {Instances, {records::instance(2, 1)}}});
    read(stream);
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(childIds(assembly(1)), (std::vector<int>{2}));
    currentSubPool().clear();
    EXPECT_EQ(countOf(&SubPool::m_Hierarchies), 0U);
}

TEST_F(HostileProduct, ANodeThatIsItsOwnDescendantIsRefused)
{
    expectRefused(
        records::model(Parts,
                       {records::part(1, "", {records::branch(7, 0, "", {records::again(7)})})}),
        "section 17 (parts), record 1, byte 140: the node 7 is its own descendant.");
    ByteString const inner = records::branch(8, 0, "", {records::leaf(9), records::again(7)});
    expectRefused(
        records::model(Parts, {records::part(1, "", {records::branch(7, 0, "", {inner})})}),
        "the node 7 is its own descendant.");
}

TEST_F(HostileProduct, ANodeOfAnotherTypeIsRefused)
{
    for (int const type : {INT_MIN, 0, 3, INT_MAX})
        expectRefused(
            records::model(
                Parts, {records::part(1, "", {records::leaf(6), ByteString().i32(7).i32(type)})}),
            "there is no node of type " + std::to_string(type));
}

TEST_F(HostileProduct, TakenIdsOfHierarchiesAreRefused)
{
    expectRefused(
        records::model(Assemblies, {records::assembly(1, "a", {}), records::assembly(1, "b", {})}),
        "section 16 (assemblies), record 2");
    expectRefused(records::model({{Assemblies, {records::assembly(1, "", {})}},
                                  {Parts, {records::part(1, "")}}}),
                  "section 17 (parts), record 1, byte 133: the id 1 is taken.");
    expectRefused(
        records::model({{Parts, {records::part(1, "")}}, {Instances, {records::instance(1, 1)}}}),
        "the id 1 is taken.");
    expectRefused(records::model(Assemblies, {records::assembly(102, "", {})}),
                  "the id 102 is taken.");
    expectRefused(records::model(Parts, {records::part(1, "part"), records::part(100, "top")}),
                  "the id 100 is taken.");
    expectRefused(records::model(Instances, {records::instance(101, 100)}), "the id 101 is taken.");
}

TEST_F(HostileProduct, WhatHasAnOwnerGetsNoSecondOne)
{
    auto const listing = [](std::size_t list, std::vector<int> const & ids) {
        records::Lists lists;
        lists[list] = ids;
        return lists;
    };
    std::vector<ByteString> const bodies = {records::body(1, "", {}, {1})};
    std::vector<ByteString> const strips = {records::bareStrip(1)};
    expectRefused(records::model({{Facets, strips},
                                  {Bodies, bodies},
                                  {Parts,
                                   {records::part(1, "a", {}, listing(0, {1})),
                                    records::part(2, "b", {}, listing(0, {1}))}}}),
                  "section 17 (parts), record 2");
    expectRefused(records::model({{Facets, strips},
                                  {Bodies, bodies},
                                  {Parts, {records::part(1, "a", {}, listing(4, {1}))}}}),
                  "the facets 1 has an owner already");
    expectRefused(records::model({{Points, {records::point(1)}},
                                  {Parts, {records::part(1, "a", {}, listing(1, {1, 1}))}}}),
                  "the point 1 has an owner already");
    expectRefused(records::model({{Annotations, {records::annotation(1)}},
                                  {Parts, {records::part(1, "a", {}, listing(7, {1, 1}))}}}),
                  "the annotation 1 has an owner already");
}

TEST_F(HostileProduct, APartOfAStreamCannotTakeWhatWasThereBefore)
{
    char const * const names[] = {"body 100",   "point 100", nullptr, nullptr,
                                  "facets 100", nullptr,     nullptr, "annotation 100"};
    for (std::size_t list = 0; list < 8; ++list) {
        if (names[list] == nullptr)
            continue;
        records::Lists lists;
        lists[list] = {100};
        expectRefused(records::model(Parts, {records::part(1, "", {}, lists)}),
                      std::string(names[list]) + " is not of this stream");
    }
}

TEST_F(HostileProduct, AnEdgeMayStandInAnyNumberOfParts)
{
    records::Lists lists;
    lists[6] = {1, 1};
    read(records::model(
        {{Edges, {records::edge(1, -1, -1, -1)}},
         {Parts, {records::part(1, "", {}, lists), records::part(2, "", {}, lists)}}}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    currentSubPool().clear();
    EXPECT_EQ(countOf(&SubPool::m_Edges), 0U);
}

TEST_F(HostileProduct, TheNamesOfRefusedComponentsAreFreeAgain)
{
    Bytes stream = records::model({{Assemblies, {records::assembly(1, "part", {})}},
                                   {Parts, {records::part(2, "new"), records::part(3, "new")}}});
    stream.resize(stream.size() - 3);
    expectRefused(stream, "section 23");
    std::string name = "new";
    currentSubPool().uniqueName(name);
    EXPECT_EQ(name, "new");
}

std::vector<std::string> oddTexts()
{
    std::string everyByte;
    for (int byte = 1; byte < 256; ++byte)
        everyByte.push_back(static_cast<char>(byte));
    return {"<script>alert('&amp;')</script><!--", everyByte, "\xc3\x28\xf0\x9f\xed\xa0\x80",
            std::string(1 << 20, 'm')};
}

TEST_F(HostileProduct, MarkupControlCharactersBrokenUtf8AndAMegabyteTravelInEveryText)
{
    using namespace records;
    for (std::string const & text : oddTexts()) {
        startEmpty();
        ByteString whole;
        whole.i32(2).text(text).text(text).text(text).text(text).raw(millimetres());
        ByteString const value = textValue(text);
        whole.raw(counted(
            {branch(1, 2, text, {leaf(3, {parameter(1, {value})})}, {}, {property(text, value)})}));
        whole.raw(identity()).zeros(32);
        ByteString labelled;
        labelled.i32(1).text(text + "-").text(text).text(text).raw(millimetres());
        labelled.raw(identity()).i32(0);
        ByteString noted;
        noted.i32(1).zeros(96 + 4 + 68).text(text).text(text);
        Bytes const stream =
            withLog(model({{Annotations, {noted}},
                           {Assemblies, {labelled}},
                           {Parts, {whole}},
                           {Attributes, {records::attribute(text, 7, {value}, {})}},
                           {ReportEntries, {reportEntry(text, 1, 0)}},
                           {TextList, {ByteString().text(text)}}}),
                    {{{}, {}, {}, {}, {logEntry(text, 0, 0)}}});
        read(stream);
        EXPECT_EQ(Server::exchangeFailure(), "");
        expectWrittenAs(stream);
    }
}

TEST_F(HostileProduct, TenThousandChildrenKeepTheirOrder)
{
    constexpr int Many = 10000;
    std::vector<int> children;
    std::vector<ByteString> instances;
    std::vector<ByteString> leaves;
    for (int i = 0; i < Many; ++i) {
        // Every id from 10 on, in an order that is neither up nor down.
        children.push_back(10 + i * 7919 % Many);
        instances.push_back(records::instance(10 + i, 2));
        leaves.push_back(records::leaf(children.back()));
    }
    startEmpty();
    Bytes const stream =
        records::model({{Assemblies, {records::assembly(1, "", children)}},
                        {Parts, {records::part(2, "p", {records::branch(1, 0, "", leaves)})}},
                        {Instances, instances}});
    read(stream);
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(childIds(assembly(1)), children);
    expectWrittenAs(stream);
}

constexpr int Deep = 100000;

/// Branches below each other, each with an attachment and a property.
Bytes deepTree()
{
    ByteString record;
    record.i32(1).zeros(16).raw(records::millimetres()).i32(1);
    for (int level = 1; level <= Deep; ++level)
        record.i32(level).i32(1).i32(level).text("b").i32(level < Deep ? 1 : 0);
    for (int level = Deep; level >= 1; --level)
        record.raw(records::attachments({{1, 7}}))
            .i32(1)
            .raw(records::property("p", records::intValue(level)));
    return records::model(Parts, {record.u8(1).zeros(32)});
}

TEST_F(HostileProduct, ATreeOfAHundredThousandLevelsIsReadWrittenAndFreedOnASmallStack)
{
    tests::onSmallStack([this] {
        startEmpty();
        Bytes const bytes = deepTree();
        read(bytes);
        EXPECT_EQ(Server::exchangeFailure(), "");
        expectWrittenAs(bytes);
        currentSubPool().clear();
    });
}

TEST_F(HostileProduct, ATreeOfAHundredThousandLevelsThatIsCutIsFreedOnASmallStack)
{
    tests::onSmallStack([this] {
        // Behind the tree, on its way back up, and on its way down.
        Bytes bytes = deepTree();
        std::size_t const size = bytes.size();
        for (std::size_t const cut : {size - 30, size / 2, size / 4}) {
            bytes.resize(cut);
            expectRefused(bytes, "The model stream is not sound: section ");
        }
    });
}

/// Assemblies below each other, the topmost last.
std::vector<ByteString> deepAssemblies()
{
    std::vector<ByteString> assemblies;
    for (int id = 1; id <= Deep; ++id) {
        std::vector<int> const below = id > 1 ? std::vector{id - 1} : std::vector<int>();
        assemblies.push_back(records::assembly(id, std::to_string(id), below));
    }
    return assemblies;
}

TEST_F(HostileProduct, AHundredThousandLevelsOfAssembliesAreReadWrittenAndFreedOnASmallStack)
{
    tests::onSmallStack([this] {
        startEmpty();
        Bytes const bytes = records::model(Assemblies, deepAssemblies());
        read(bytes);
        EXPECT_EQ(Server::exchangeFailure(), "");
        expectWrittenAs(bytes);
        currentSubPool().clear();
    });
}

TEST_F(HostileProduct, ARingOfAHundredThousandAssembliesIsRefusedOnASmallStack)
{
    tests::onSmallStack([this] {
        startEmpty();
        m_Before = snapshot();
        std::vector<ByteString> assemblies = deepAssemblies();
        assemblies.front() = records::assembly(1, "1", {Deep});
        expectRefused(records::model(Assemblies, assemblies), " is its own descendant.");
    });
}

} // namespace
} // namespace transl_tk
