// What hangs on products, instances and shapes: colours of single occurrences, materials,
// validation properties, layers, header data.
#include "step/made_documents.h"
#include "step/made_files.h"
#include "step/received_model.h"
#include "support/leftovers.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/attributes/value.h>
#include <keld-transl/model/base.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/face.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::UnorderedElementsAre;
using tests::ReceivedModel;

constexpr int Product = 2;
constexpr int Layer = 3;
constexpr int Material = 4;
constexpr int Validation = 5;
constexpr int Header = 6;
constexpr int InstanceName = 9;
constexpr int Occurrence = 15;

class StepAttributes : public testing::Test
{
protected:
    tests::LeftoverGuard m_Guard;
    tests::TemporaryDirectory m_Files;
    std::string const m_Path = m_Files / "made.step";
};

std::vector<transl_tk::Base *> entitiesOf(transl_tk::Attribute & attribute)
{
    std::vector<transl_tk::Base *> result;
    attribute.forEachEntity(
        [](transl_tk::Base * entity, void * list) {
            static_cast<std::vector<transl_tk::Base *> *>(list)->push_back(entity);
            return true;
        },
        &result);
    return result;
}

/// Which entities have attributes of a number, each once: the kind, and of parts the name.
std::set<std::string> holders(ReceivedModel const & received, int number)
{
    std::set<std::string> result;
    for (auto * const attribute : received.model().m_Attributes) {
        if (attribute->getType() != number)
            continue;
        for (auto * const entity : entitiesOf(*attribute)) {
            if (auto * const part = dynamic_cast<transl_tk::Part *>(entity))
                result.insert(std::string("Part ") + part->getSecondLabel());
            else
                result.insert(dynamic_cast<transl_tk::Face *>(entity) ? "Face" : "other");
        }
    }
    return result;
}

/// Names of instances by their ids.
std::map<int, std::string> instanceNames(ReceivedModel const & received)
{
    std::map<int, std::string> names;
    for (auto * const attribute : received.model().m_Attributes) {
        if (attribute->getType() != InstanceName)
            continue;
        char * name = nullptr;
        attribute->getValue(0)->getValue(name);
        for (auto * const entity : entitiesOf(*attribute))
            names[entity->getId()] = name;
    }
    return names;
}

/// "<name> of <instance>: <colour> at <way>" for each colour of a single occurrence.
std::vector<std::string> occurrenceColours(ReceivedModel const & received)
{
    auto const names = instanceNames(received);
    std::vector<std::string> result;
    for (auto * const attribute : received.model().m_Attributes) {
        if (attribute->getType() != Occurrence)
            continue;
        std::string words = attribute->getName();
        for (auto * const entity : entitiesOf(*attribute))
            words += " of " + names.at(entity->getId());
        words += ":";
        unsigned char colour[4];
        attribute->getColor(colour);
        for (unsigned char const component : colour)
            words += " " + std::to_string(component);
        words += " at";
        for (int i = 4; i < attribute->getNumValues(); ++i) {
            int id = 0;
            attribute->getValue(i)->getValue(id);
            words += " / " + names.at(id);
        }
        result.push_back(words);
    }
    return result;
}

TEST_F(StepAttributes, ColoursOfSingleOccurrencesHangOnTheirInstanceWithTheWayToIt)
{
    tests::writePlant(m_Path);
    ReceivedModel const received(m_Path);
    EXPECT_THAT(occurrenceColours(received),
                UnorderedElementsAre(
                    "surface color of robot 1: 0 255 0 100 at / line 1 / cell 2 / robot 1",
                    "surface color of cell 1: 0 0 255 100 at / line 2 / cell 1",
                    "curve color of cell 1: 0 0 255 100 at / line 2 / cell 1",
                    "surface color of robot 2: 255 0 0 100 at / line 2 / cell 2 / robot 2"));
    EXPECT_THAT(received.log(), testing::HasSubstr("Nothing was lost."));
}

TEST_F(StepAttributes, MaterialHasItsDescriptionAndDensity)
{
    tests::writeBlock(m_Path);
    ReceivedModel const received(m_Path);
    EXPECT_THAT(
        received.attributes(Material),
        UnorderedElementsAre("material steel", "material description cold drawn", "density 7.85"));
    EXPECT_THAT(holders(received, Material), ElementsAre("Part block"));
}

TEST_F(StepAttributes, DensityIsOfTheFilesMassInACubicCentimetre)
{
    tests::writeBlock(m_Path);
    // Grams in a cubic centimetre become grams in a cubic millimetre.
    tests::replaceInFile(m_Path, "SI_UNIT(.CENTI.,.METRE.)", "SI_UNIT(.MILLI.,.METRE.)");
    ReceivedModel const received(m_Path);
    EXPECT_THAT(received.attributes(Material), Contains("density 7850"));
}

TEST_F(StepAttributes, ValidationPropertiesAreWhatTheFileClaims)
{
    tests::writeBlock(m_Path);
    ReceivedModel const received(m_Path);
    EXPECT_THAT(received.attributes(Validation),
                UnorderedElementsAre("area 2200.5", "volume 6000.25", "centroid 5 10 15.5"));
    EXPECT_THAT(holders(received, Validation), ElementsAre("Part block"));
}

TEST_F(StepAttributes, ValidationPropertiesBecomeMillimetres)
{
    tests::writeBlock(m_Path);
    tests::replaceInFile(m_Path, "SI_UNIT(.MILLI.,.METRE.)", "SI_UNIT(.CENTI.,.METRE.)");
    ReceivedModel const received(m_Path);
    EXPECT_THAT(received.attributes(Validation),
                UnorderedElementsAre("area 220050", "volume 6.00025e+06", "centroid 50 100 155"));
}

TEST_F(StepAttributes, LayersHangOnTheirPartAndTheirFace)
{
    tests::writeBlock(m_Path);
    ReceivedModel const received(m_Path);
    EXPECT_THAT(received.attributes(Layer), UnorderedElementsAre("layer base", "layer painted"));
    EXPECT_THAT(holders(received, Layer), UnorderedElementsAre("Part block", "Face"));
}

TEST_F(StepAttributes, ProductsHaveTheirIdAndDescription)
{
    tests::writeBlock(m_Path);
    tests::replaceInFile(m_Path, "PRODUCT('block','block','',",
                         "PRODUCT('B-1','block','a block of steel',");
    ReceivedModel const received(m_Path);
    EXPECT_THAT(received.attributes(Product),
                UnorderedElementsAre("product id B-1", "product description a block of steel"));
    EXPECT_THAT(holders(received, Product), ElementsAre("Part block"));
    received.model().m_Hierarchies.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        auto * const part = static_cast<transl_tk::Part *>(entity);
        EXPECT_STREQ("B-1", part->getFirstLabel());
        EXPECT_STREQ("block", part->getSecondLabel());
    });
}

TEST_F(StepAttributes, HeaderDataHangOnWhatStandsOnTop)
{
    tests::writeBlock(m_Path);
    std::string const text = tests::contentOf(m_Path);
    std::size_t const start = text.find("FILE_DESCRIPTION(");
    std::size_t const end = text.find("FILE_SCHEMA(");
    ASSERT_LT(start, end);
    tests::replaceInFile(m_Path, text.substr(start, end - start),
                         "FILE_DESCRIPTION(('made for a test','by hand'),'2;1');\n"
                         "FILE_NAME('block.stp','2024-02-29T12:00:00',('Ada','Blaise'),('Lab'),"
                         "'pre 1','system 2','nobody');\n");
    ReceivedModel const received(m_Path);
    EXPECT_THAT(received.attributes(Header),
                UnorderedElementsAre("file_name block.stp", "time_stamp 2024-02-29T12:00:00",
                                     "author Ada", "author Blaise", "organization Lab",
                                     "preprocessor_version pre 1", "originating_system system 2",
                                     "authorisation nobody", "description made for a test",
                                     "description by hand",
                                     "schema AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF. "
                                     "{1 0 10303 442 1 1 4 }"));
    EXPECT_THAT(holders(received, Header), ElementsAre("Part block"));
}

} // namespace
