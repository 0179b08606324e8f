// What hangs on products, instances and shapes: colours of single occurrences, materials,
// validation properties, layers, header data.
#include "step/made_documents.h"
#include "step/received_model.h"
#include "support/leftovers.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/attributes/value.h>
#include <keld-transl/model/base.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

namespace {

using testing::UnorderedElementsAre;
using tests::ReceivedModel;

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

} // namespace
