// What hangs on bodies, faces, edges and parts in a model that is exported and imported again.
#include "step/kernel_reading.h"
#include "step/made_files.h"
#include "step/received_model.h"
#include "step/sent_model.h"
#include "support/leftovers.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/product/part.h>
#include <keld-transl/product/units.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::UnorderedElementsAre;
using tests::ReceivedModel;
using tests::SentModel;
using transl_tk::Attribute;
using transl_tk::Base;

constexpr unsigned Completed = 8;
constexpr int Colour = 1;
constexpr int Layer = 3;
constexpr int Material = 4;
constexpr int Validation = 5;

Attribute * newAttribute(char const * name, int type, Base & entity)
{
    auto * const attribute = Attribute::create(name, static_cast<Attribute::Type>(type));
    attribute->addEntity(&entity);
    return attribute;
}

void addColour(Base & entity, char const * name, unsigned char red, unsigned char green,
               unsigned char opacity = 100)
{
    Attribute * const colour = newAttribute(name, Colour, entity);
    colour->addValue(red);
    colour->addValue(green);
    colour->addValue(static_cast<unsigned char>(7));
    colour->addValue(opacity);
}

void addText(Base & entity, char const * name, int type, char const * text)
{
    newAttribute(name, type, entity)->addValue(text);
}

Base & firstOf(transl_tk::EntityStore const & store)
{
    return *store.m_Entities.begin()->second;
}

/// What hangs on entities of a kind, with the names of the attributes.
std::multiset<std::string> factsOf(ReceivedModel const & received, int type, int kind)
{
    std::multiset<std::string> result;
    for (Attribute * const attribute : received.model().m_Attributes) {
        if (attribute->getType() != type)
            continue;
        struct Context
        {
            int kind;
            int count;
        } context = {kind, 0};
        attribute->forEachEntity(
            [](Base * entity, void * user) {
                auto & found = *static_cast<Context *>(user);
                found.count += entity->getEntityKind() == found.kind ? 1 : 0;
                return true;
            },
            &context);
        for (int i = 0; i < context.count; ++i)
            result.insert(tests::wordsOf(*attribute));
    }
    return result;
}

class StepFacts : public testing::Test
{
protected:
    /// Exports `shape` with what `add(model, part)` hangs on it.
    SentModel send(TopoDS_Shape const & shape,
                   std::function<void(transl_tk::SubPool &, transl_tk::Part &)> const & add) const
    {
        std::string const from = m_Files / "shape.brep";
        tests::writeBrep(shape, from);
        ReceivedModel const received(from);
        return SentModel(target(), [&] {
            transl_tk::Pool::getInstance()->setCurrent(from);
            transl_tk::SubPool & model = received.model();
            add(model, static_cast<transl_tk::Part &>(firstOf(model.m_Hierarchies)));
        });
    }

    std::string target() const { return m_Files / "out.step"; }

    tests::LeftoverGuard m_Guard;
    tests::TemporaryDirectory m_Files;
};

TEST_F(StepFacts, ColoursOfPartsBodiesFacesAndEdgesComeBack)
{
    SentModel const sent = send(tests::twoSolids(), [](auto & model, auto & part) {
        addColour(part, "color", 10, 11);
        addColour(firstOf(model.m_Bodies), "surface color", 20, 21, 40);
        addColour(firstOf(model.m_Faces), "surface color", 30, 31);
        addColour(firstOf(model.m_Edges), "curve color", 40, 41);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(), HasSubstr("Nothing was lost."));
    ReceivedModel const received(target());
    // The colour of a part of several bodies comes back as theirs.
    EXPECT_THAT(factsOf(received, Colour, transl_tk::EntityKindBody),
                AllOf(Contains("surface color 10 11 7 100"), Contains("surface color 20 21 7 40")));
    EXPECT_THAT(factsOf(received, Colour, transl_tk::EntityKindFace),
                Contains(HasSubstr("30 31 7 100")));
    EXPECT_THAT(factsOf(received, Colour, transl_tk::EntityKindEdge),
                Contains(HasSubstr("40 41 7 100")));
}

TEST_F(StepFacts, LayersComeBack)
{
    SentModel const sent = send(tests::twoSolids(), [](auto & model, auto & part) {
        addText(part, "layer", Layer, "of the part");
        addText(firstOf(model.m_Bodies), "layer", Layer, "of the body");
        addText(firstOf(model.m_Faces), "layer", Layer, "of the face");
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(
        ReceivedModel(target()).attributes(Layer),
        UnorderedElementsAre("layer of the part", "layer of the body", "layer of the face"));
}

TEST_F(StepFacts, MaterialAndPropertiesComeBackInAnyUnit)
{
    SentModel const sent = send(tests::seamedCylinder(), [](auto &, auto & part) {
        part.setUnits(transl_tk::Units::create(transl_tk::Units::Inch,
                                               part.getUnits()->getAngularType(), 1.0, 1.0));
        addText(part, "material", Material, "steel");
        addText(part, "material description", Material, "mild");
        newAttribute("density", Material, part)->addValue(7.85);
        newAttribute("area", Validation, part)->addValue(433.5);
        newAttribute("volume", Validation, part)->addValue(565.25);
        Attribute * const centroid = newAttribute("centroid", Validation, part);
        for (double const value : {0.0, 0.0, 10.0})
            centroid->addValue(value);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    ReceivedModel const received(target());
    EXPECT_THAT(
        received.attributes(Material),
        UnorderedElementsAre("material steel", "material description mild", "density 7.85"));
    EXPECT_THAT(received.attributes(Validation),
                UnorderedElementsAre("area 433.5", "volume 565.25", "centroid 0 0 10"));
    // The centroid in the file's unit, the inch; area and volume have a unit of their own.
    EXPECT_THAT(tests::contentOf(target()),
                AllOf(HasSubstr("0.393700787"), HasSubstr("433.5"), HasSubstr("565.25")));
}

TEST_F(StepFacts, NamesOfBodiesAndFacesComeBack)
{
    SentModel const sent = send(tests::twoSolids(), [](auto & model, auto &) {
        static_cast<transl_tk::Body &>(firstOf(model.m_Bodies)).setName("left");
        static_cast<transl_tk::Face &>(firstOf(model.m_Faces)).setLabel("front");
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    ReceivedModel const received(target());
    std::multiset<std::string> bodies;
    received.model().m_Bodies.m_Entities.forEach([&](int, Base * entity) {
        bodies.insert(static_cast<transl_tk::Body *>(entity)->getName());
    });
    EXPECT_THAT(bodies, UnorderedElementsAre("left", "shape"));
    std::multiset<std::string> faces;
    received.model().m_Faces.m_Entities.forEach([&](int, Base * entity) {
        faces.insert(static_cast<transl_tk::Face *>(entity)->getLabel());
    });
    EXPECT_EQ(1U, faces.count("front"));
}

TEST_F(StepFacts, TheUnitOfTheModelIsThatOfTheFile)
{
    SentModel const sent = send(tests::seamedCylinder(), [](auto &, auto & part) {
        part.setUnits(transl_tk::Units::create(transl_tk::Units::Metre,
                                               part.getUnits()->getAngularType(), 1.0, 1.0));
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(tests::contentOf(target()), HasSubstr("SI_UNIT($,.METRE.)"));
    EXPECT_NEAR(tests::measuresOf(tests::seamedCylinder()).volume,
                tests::readByKernel(target()).measures.volume, 1e-3);
}

TEST_F(StepFacts, AUnitThatCannotBeWrittenIsSaid)
{
    SentModel const sent = send(tests::seamedCylinder(), [](auto &, auto & part) {
        part.setUnits(transl_tk::Units::create(transl_tk::Units::Yard,
                                               part.getUnits()->getAngularType(), 1.0, 1.0));
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(), HasSubstr("The model's unit (number 13) cannot be written: the file is "
                                      "in millimetres."));
}

} // namespace
