#include "catalogue/metadata_store.h"
#include "support/leftovers.h"

#include <keld-transl/model/pool.h>

#include <gtest/gtest.h>

namespace {

using keld::Metadata;
using keld::MetadataStore;
using transl_tk::Attribute;
using transl_tk::Pool;

class MetadataStoreTest : public testing::Test
{
protected:
    MetadataStoreTest() { Pool::construct("model"); }
    ~MetadataStoreTest() override { Pool::destruct(); }

    static Attribute * dictionary(int faces)
    {
        Attribute * const attribute = Attribute::create("", Attribute::Dictionary);
        for (int const value : {2, 70, faces, 0})
            attribute->addValue(value);
        attribute->addValue("");
        return attribute;
    }

    MetadataStore m_Store;
};

TEST_F(MetadataStoreTest, TellsAllThatItsDictionaryHolds)
{
    m_Store.addData(transl_tk::Faces, 5);
    m_Store.addData(static_cast<transl_tk::DataBaseType>(1000));
    m_Store.addData(transl_tk::FeatureCounts, std::string(" | <br>"));
    m_Store.addData(transl_tk::TextList, std::string("a"));
    Metadata const expected{{{70, 5}, {1000, 1}}, {{" | <br>", 1}}, "a,"};
    EXPECT_EQ(expected, m_Store.content());
    EXPECT_TRUE(Pool::getInstance()->currentSubPool()->m_Attributes.empty());
}

TEST_F(MetadataStoreTest, TakesTheMetadataOfTheModelOver)
{
    Attribute::create("other", Attribute::Product);
    dictionary(5);
    m_Store.addMetadata();
    EXPECT_EQ((std::map<int, int>{{70, 5}}), m_Store.content().counters);
}

TEST_F(MetadataStoreTest, SaysThatAModelHasNone)
{
    Attribute::create("", Attribute::Product);
    EXPECT_THROW(
        try { m_Store.addMetadata(); } catch (std::runtime_error const & failure) {
            EXPECT_STREQ("the translator handed over no metadata.", failure.what());
            throw;
        },
        std::runtime_error);
}

TEST_F(MetadataStoreTest, StoresWhatItHoldsUnderTheNamesGiven)
{
    tests::TemporaryDirectory const files;
    dictionary(5);
    m_Store.addMetadata();
    m_Store.connect(files / "a.db", 0, 0, 0, keld::CatalogueForWriting);
    m_Store.storeNEUTRAL("/part", 0);
    m_Store.storeVORN("stl", 0);
    m_Store.storeData();
    m_Store.disconnect();

    keld::Catalogue catalogue(files / "a.db", keld::Catalogue::Access::Read);
    auto const entries = catalogue.find({});
    ASSERT_EQ(1U, entries.size());
    EXPECT_EQ("/part", entries[0].path);
    EXPECT_EQ("stl", entries[0].translator);
    EXPECT_EQ(m_Store.content(), entries[0].metadata);
}

TEST_F(MetadataStoreTest, ForReadingMakesNoCatalogue)
{
    tests::TemporaryDirectory const files;
    EXPECT_THROW(m_Store.connect(files / "a.db", 0, 0, 0, keld::CatalogueForReading),
                 keld::DatabaseError);
    EXPECT_TRUE(files.names().empty());
}

TEST_F(MetadataStoreTest, StoresNothingWithoutACatalogue)
{
    EXPECT_THROW(m_Store.storeData(), std::runtime_error);
}

} // namespace
