#include "support/models.h"
#include "support/slots.h"
#include "unit/metadata/attribute_contents.h"

#include <keld-transl/metadata/database_dictionary.h>
#include <keld-transl/metadata/database_policy.h>
#include <keld-transl/metadata/inactive_sides.h>

#include <gtest/gtest.h>
#include <string>
#include <type_traits>

namespace transl_tk {
namespace {

/// A store the way that programs around the toolkit make one.
template <class Dictionary, class Connection>
class Joined : public DataBasePolicy, public Dictionary, public Connection
{
public:
    void connect(std::string const & database, int const & first, int const & second,
                 int const & third, deckAction const & action) override
    {
        Connection::connect(database, first, second, third, action);
    }
    void disconnect() override { Connection::disconnect(); }
    void addData(DataBaseType const & type, int const & value) override
    {
        Dictionary::addData(type, value);
    }
    void addData(DataBaseType const & type, std::string const & text) override
    {
        Dictionary::addData(type, text);
    }
    void addData(DataBaseType const & type) override { Dictionary::addData(type); }
    void resetData() override { Dictionary::resetData(); }
    void serialize() override { Dictionary::serialize(); }
    void deserialize(Attribute * attribute) override { Dictionary::deserialize(attribute); }
    void getData(DataBaseType const & type, int & value) override
    {
        Dictionary::getData(type, value);
    }
    void getData(DataBaseType const & type, std::string & text) override
    {
        Dictionary::getData(type, text);
    }
    void storeVORN(std::string const & text, int const & number) override
    {
        Connection::storeVORN(text, number);
    }
    void storeDECK(std::string const & text, int const & first, int const & second) override
    {
        Connection::storeDECK(text, first, second);
    }
    void storeNEUTRAL(std::string const & text, int const & number) override
    {
        Connection::storeNEUTRAL(text, number);
    }
    void storeData() override { Connection::storeData(); }
    void addMetadata() override { Connection::addMetadata(); }

    virtual void addedBehind() {}
};

using Store = Joined<DataBaseDictionary, ConnectionInactive>;
using Inactive = Joined<DictionaryInactive, ConnectionInactive>;

void callTheConnection(DataBasePolicy & policy)
{
    policy.connect("database", 1, 2, 3, deckAction{});
    policy.storeVORN("text", 1);
    policy.storeDECK("text", 1, 2);
    policy.storeNEUTRAL("text", 1);
    policy.storeData();
    policy.addMetadata();
    policy.disconnect();
}

TEST(DataBasePolicy, ReachesTheDictionaryThatItIsJoinedWith)
{
    tests::ScopedPool const pool;
    Store store;
    DataBasePolicy & policy = store;
    policy.addData(Faces);
    policy.addData(Faces);
    policy.addData(Parts, 5);
    policy.addData(TextList, "a");
    callTheConnection(policy);
    int faces = 0;
    std::string text;
    policy.getData(Faces, faces);
    policy.getData(TextList, text);
    EXPECT_EQ(faces, 2);
    EXPECT_EQ(text, "a,");
    policy.serialize();
    policy.resetData();
    policy.getData(Faces, faces);
    EXPECT_EQ(faces, 0);
    policy.deserialize(tests::currentSubPool().m_Attributes.at(0));
    policy.getData(Parts, faces);
    EXPECT_EQ(faces, 5);
}

TEST(DataBasePolicy, CountsFeaturesInTheDictionaryThatItIsJoinedWith)
{
    Store store;
    DataBasePolicy & policy = store;
    for (char const * name : {"HOLE", "aHOLEb", "HOLE", "CHAMFER", "FILLET HOLE", "hole", ""})
        policy.addFeatureType(name);
    int holes = 0;
    int blends = 0;
    policy.getData(HoleFeatures, holes);
    policy.getData(BlendFeatures, blends);
    EXPECT_EQ(holes, 3);
    EXPECT_EQ(blends, 2);
}

TEST(DataBasePolicy, OfInactiveSidesDoesNothing)
{
    tests::ScopedPool const pool;
    Inactive inactive;
    DataBasePolicy & policy = inactive;
    callTheConnection(policy);
    policy.addData(Faces);
    policy.addData(Faces, 5);
    policy.addData(TextList, "a");
    policy.addFeatureType("HOLE");
    policy.serialize();
    policy.deserialize(tests::anAttribute("", 14, {2, 70, 5, 0, ""}));
    policy.resetData();
    int number = 17;
    std::string text = "untouched";
    policy.getData(Faces, number);
    policy.getData(TextList, text);
    EXPECT_EQ(number, 17);
    EXPECT_EQ(text, "untouched");
    EXPECT_EQ(tests::currentSubPool().m_Attributes.size(), 1U) << "the one made here";
}

TEST(DictionaryInactive, HasAllOperationsItself)
{
    DictionaryInactive dictionary;
    dictionary.addFeatureType("HOLE");
    int number = 17;
    dictionary.getData(HoleFeatures, number);
    EXPECT_EQ(number, 17);
    EXPECT_FALSE(std::is_polymorphic_v<DictionaryInactive>);
    EXPECT_FALSE(std::is_polymorphic_v<ConnectionInactive>);
}

TEST(DataBasePolicy, IsAbstractCopiesNothingAndCanBeDeleted)
{
    EXPECT_TRUE(std::is_abstract_v<DataBasePolicy>);
    EXPECT_TRUE(std::has_virtual_destructor_v<DataBasePolicy>);
    EXPECT_TRUE(std::is_copy_assignable_v<DataBasePolicy>);
    EXPECT_EQ(sizeof(DataBasePolicy), sizeof(void *)) << "no state";
    Store const store;
    DataBasePolicy const * const copy = new Store(store);
    delete copy;
}

TEST(DataBasePolicy, TableHoldsFifteenOperationsThenTheDestructor)
{
    using P = DataBasePolicy;
    using Number = void (P::*)(DataBaseType const &, int const &);
    using Text = void (P::*)(DataBaseType const &, std::string const &);
    using GetNumber = void (P::*)(DataBaseType const &, int &);
    using GetText = void (P::*)(DataBaseType const &, std::string &);
    EXPECT_EQ(tests::slotOf(&P::connect), 0U);
    EXPECT_EQ(tests::slotOf(&P::disconnect), 1U);
    EXPECT_EQ(tests::slotOf(static_cast<Number>(&P::addData)), 2U);
    EXPECT_EQ(tests::slotOf(static_cast<Text>(&P::addData)), 3U);
    EXPECT_EQ(tests::slotOf(static_cast<void (P::*)(DataBaseType const &)>(&P::addData)), 4U);
    EXPECT_EQ(tests::slotOf(&P::resetData), 5U);
    EXPECT_EQ(tests::slotOf(&P::serialize), 6U);
    EXPECT_EQ(tests::slotOf(&P::deserialize), 7U);
    EXPECT_EQ(tests::slotOf(static_cast<GetNumber>(&P::getData)), 8U);
    EXPECT_EQ(tests::slotOf(static_cast<GetText>(&P::getData)), 9U);
    EXPECT_EQ(tests::slotOf(&P::storeVORN), 10U);
    EXPECT_EQ(tests::slotOf(&P::storeDECK), 11U);
    EXPECT_EQ(tests::slotOf(&P::storeNEUTRAL), 12U);
    EXPECT_EQ(tests::slotOf(&P::storeData), 13U);
    EXPECT_EQ(tests::slotOf(&P::addMetadata), 14U);
    // The destructor takes 15 and 16, and nothing of the policy's own follows.
    EXPECT_EQ(tests::slotOf(&Store::addedBehind), 17U);
}

} // namespace
} // namespace transl_tk
