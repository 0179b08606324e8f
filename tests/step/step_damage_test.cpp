// Files that are damaged: something in them is missing, they are cut, or bytes are others.
#include "step/made_documents.h"
#include "step/made_files.h"
#include "step/received_model.h"
#include "support/leftovers.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;
using tests::ReceivedModel;

constexpr unsigned int Completed = 8;
constexpr unsigned int Failed = 0;
constexpr int Colour = 1;
constexpr int Layer = 3;
constexpr int Material = 4;
constexpr int Validation = 5;
constexpr int Warning = 1;
constexpr int Error = 2;

class StepDamage : public testing::Test
{
protected:
    std::string block() const
    {
        std::string const path = m_Files / "block.step";
        tests::writeBlock(path);
        return path;
    }

    std::string file(std::string const & name, std::string const & content) const
    {
        std::ofstream(m_Files / name, std::ios::binary) << content;
        return m_Files / name;
    }

    tests::LeftoverGuard m_Guard;
    tests::TemporaryDirectory m_Files;
};

/// Gives the first entity of a type another number, so that what refers to it refers to nothing.
void takeAway(std::string const & path, std::string const & type)
{
    std::string const text = tests::contentOf(path);
    std::string const definition = " = " + type + "(";
    std::size_t const end = text.find(definition);
    ASSERT_NE(text.npos, end);
    std::size_t const start = text.rfind('#', end);
    tests::replaceInFile(path, "\n" + text.substr(start, end - start) + definition,
                         "\n#999999" + definition);
}

/// Either something arrived, with its coverage, or a sentence says why nothing did.
void expectAnAnswer(ReceivedModel const & received, std::string const & what)
{
    if (received.status() == Completed)
        EXPECT_THAT(received.log(), HasSubstr("lost.")) << what;
    else
        EXPECT_FALSE(received.log().empty()) << what << ", status " << received.status();
}

TEST_F(StepDamage, AReferenceToNothingCostsWhatHasItAndIsSaid)
{
    std::string const path = m_Files / "rig.step";
    tests::writeRig(path);
    takeAway(path, "VECTOR");
    ReceivedModel const received(path);
    EXPECT_EQ(Completed, received.status());
    EXPECT_THAT(received.log(), HasSubstr("times over something that " + path +
                                          " refers to and that is not there."));
    EXPECT_THAT(received.entries(Error), Contains(HasSubstr("Body lost: #")));
    EXPECT_THAT(received.entries(Error), Contains(HasSubstr("Face lost: #")).Times(6));
    // The plate has gone; the bolt is there.
    EXPECT_EQ((tests::Counts{1, 3, 3, 2}), received.counts());
}

TEST_F(StepDamage, AFaceThatLacksABoundaryIsNoExactOne)
{
    std::string const path = block();
    takeAway(path, "LINE");
    ReceivedModel const received(path);
    EXPECT_THAT(received.entries(Error), Contains(HasSubstr("Loop lost: #")).Times(2));
    EXPECT_THAT(received.entries(0), Contains("Face: 6 in the file, 4 exact, 2 changed, 0 lost"));
    EXPECT_THAT(received.entries(Warning), Contains("Face: 2 face without one of its boundaries"));
}

TEST_F(StepDamage, AStepThatMakesTheKernelFailCostsNoMoreThanItself)
{
    std::string const path = block();
    ASSERT_THAT(ReceivedModel(path).attributes(Colour), ElementsAre("surface color 255 0 0 100"));
    takeAway(path, "FILL_AREA_STYLE_COLOUR");
    ReceivedModel const received(path);
    EXPECT_THAT(received.attributes(Colour), testing::IsEmpty());
    EXPECT_THAT(received.entries(Error),
                Contains(HasSubstr("Attributes lost: colours made the kernel fail: ")));
    EXPECT_EQ((tests::Counts{1, 6, 12, 8}), received.counts());
    EXPECT_THAT(received.attributes(Layer), UnorderedElementsAre("layer base", "layer painted"));
    EXPECT_THAT(
        received.attributes(Material),
        UnorderedElementsAre("material steel", "material description cold drawn", "density 7.85"));
    EXPECT_THAT(received.attributes(Validation),
                UnorderedElementsAre("area 2200.5", "volume 6000.25", "centroid 5 10 15.5"));
    EXPECT_THAT(received.productNames(), ElementsAre("block"));
}

TEST_F(StepDamage, APartOfAnEntityThatIsMissingIsSaid)
{
    std::string const path = block();
    takeAway(path, "DIRECTION");
    ReceivedModel const received(path);
    EXPECT_THAT(received.log(), HasSubstr(" was read in part: Parameter n0.3 (axis) "));
    EXPECT_THAT(received.entries(Warning), Contains("Object: 1 Axis2Placement3d read in part"));
}

TEST_F(StepDamage, KindsThatTheKernelDoesNotKnowAreNamed)
{
    std::string const path = block();
    tests::replaceInFile(path, "ENDSEC;\nEND-ISO",
                         "#999998 = STRANGE_THING('');\n#999999 = STRANGE_THING('');\n"
                         "ENDSEC;\nEND-ISO");
    ReceivedModel const received(path);
    EXPECT_THAT(received.log(), HasSubstr("Open CASCADE does not know \"STRANGE_THING\", of which "
                                          "2 stand in the file."));
    EXPECT_THAT(received.log(), HasSubstr("Nothing was lost."));
}

TEST_F(StepDamage, ACutBrepFileFailsWithASentence)
{
    std::string const path = m_Files / "whole.brep";
    tests::writeBrep(tests::torus(), path);
    std::string const whole = tests::contentOf(path);
    for (std::size_t part = 1; part < 8; ++part) {
        ReceivedModel const received(file("cut.brep", whole.substr(0, whole.size() * part / 8)));
        EXPECT_EQ(Failed, received.status()) << part;
        EXPECT_THAT(received.log(), HasSubstr("cut.brep")) << part;
    }
}

TEST_F(StepDamage, ACutStepFileFailsWithASentence)
{
    std::string const whole = tests::contentOf(block());
    for (std::size_t part = 1; part < 8; ++part) {
        ReceivedModel const received(file("cut.step", whole.substr(0, whole.size() * part / 8)));
        EXPECT_EQ(Failed, received.status()) << part;
        EXPECT_THAT(received.log(), HasSubstr("cut.step is cut or damaged")) << part;
    }
}

TEST_F(StepDamage, AWrongByteIsAnswered)
{
    std::string const whole = tests::contentOf(block());
    std::mt19937 random(7);
    for (int i = 0; i < 20; ++i) {
        std::string damaged = whole;
        std::size_t const place = random() % damaged.size();
        char const byte = "0123456789#(),.*$'TF-E;"[random() % 23];
        damaged[place] = byte;
        ReceivedModel const received(file("damaged.step", damaged));
        expectAnAnswer(received, std::string(1, byte) + " at " + std::to_string(place));
    }
}

} // namespace
