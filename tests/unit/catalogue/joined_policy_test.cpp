#include <keld-translator-kit/joined_policy.h>

#include <gtest/gtest.h>

namespace {

using transl_tk::Attribute;
using transl_tk::DataBaseType;
using transl_tk::deckAction;

std::string calls;

void note(std::string const & call)
{
    calls += call + ' ';
}

struct Dictionary
{
    void addData(DataBaseType const &) { note("add"); }
    void addData(DataBaseType const &, int const &) { note("set"); }
    void addData(DataBaseType const &, std::string const &) { note("text"); }
    void addFeatureType(std::string const &) { note("feature"); }
    void getData(DataBaseType const &, int &) { note("number"); }
    void getData(DataBaseType const &, std::string &) { note("words"); }
    void resetData() { note("reset"); }
    void serialize() { note("serialize"); }
    void deserialize(Attribute *) { note("deserialize"); }
};

struct Connection
{
    void connect(std::string const & name, int const & a, int const & b, int const & c,
                 deckAction const & action)
    {
        note("connect-" + name + std::to_string(a) + std::to_string(b) + std::to_string(c) +
             std::to_string(action));
    }
    void disconnect() { note("disconnect"); }
    void storeVORN(std::string const &, int const &) { note("VORN"); }
    void storeDECK(std::string const &, int const & a, int const & b)
    {
        note("DECK" + std::to_string(a) + std::to_string(b));
    }
    void storeNEUTRAL(std::string const &, int const &) { note("NEUTRAL"); }
    void storeData() { note("store"); }
    void addMetadata() { note("metadata"); }
};

TEST(JoinedPolicy, HandsEachOperationToItsSide)
{
    translator_kit::JoinedPolicy<Dictionary, Connection> joined;
    joined.addFeatureType("HOLE");
    transl_tk::DataBasePolicy & policy = joined;
    int number = 0;
    std::string text;
    policy.connect("db", 1, 2, 3, static_cast<deckAction>(4));
    policy.disconnect();
    policy.addData(transl_tk::Faces, 1);
    policy.addData(transl_tk::TextList, text);
    policy.addData(transl_tk::Faces);
    policy.resetData();
    policy.serialize();
    policy.deserialize(nullptr);
    policy.getData(transl_tk::Faces, number);
    policy.getData(transl_tk::TextList, text);
    policy.storeVORN(text, 0);
    policy.storeDECK(text, 1, 2);
    policy.storeNEUTRAL(text, 0);
    policy.storeData();
    policy.addMetadata();
    EXPECT_EQ("feature connect-db1234 disconnect set text add reset serialize deserialize number "
              "words VORN DECK12 NEUTRAL store metadata ",
              calls);
}

} // namespace
