// What is read back of a file is compared with what was to be written: damage of any kind is seen.
#include "export/inventory.h"
#include "import/document.h"
#include "step/made_files.h"
#include "support/leftovers.h"

#include <Interface_Static.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ReadBack : public testing::Test
{
protected:
    void SetUp() override
    {
        tests::writeRig(m_Files / "rig.step");
        m_Text = tests::contentOf(m_Files / "rig.step");
    }

    static step::Inventory inventoryOf(std::string const & path)
    {
        Interface_Static::SetCVal("xstep.cascade.unit", "MM");
        STEPCAFControl_Reader reader;
        EXPECT_EQ(IFSelect_RetDone, reader.ReadFile(path.c_str()));
        auto document = step::newDocument();
        EXPECT_TRUE(reader.Transfer(document));
        return step::inventoryOf(document);
    }

    /// How the file differs once `pattern` has been replaced, the first time that it stands there.
    std::vector<std::string> differencesWith(std::string const & pattern,
                                             std::string const & replacement)
    {
        std::string const damaged = std::regex_replace(m_Text, std::regex(pattern), replacement,
                                                       std::regex_constants::format_first_only);
        EXPECT_NE(m_Text, damaged);
        std::ofstream(m_Files / "damaged.step") << damaged;
        return step::differences(inventoryOf(m_Files / "rig.step"),
                                 inventoryOf(m_Files / "damaged.step"));
    }

    tests::TemporaryDirectory m_Files;
    std::string m_Text;
};

TEST_F(ReadBack, TheSameFileDoesNotDiffer)
{
    EXPECT_THAT(differencesWith("ENDSEC;", "ENDSEC; "), IsEmpty());
}

TEST_F(ReadBack, AnotherRadiusDiffers)
{
    EXPECT_THAT(differencesWith("(CYLINDRICAL_SURFACE\\('',#[0-9]+),0.1181102[0-9]*", "$1,0.11812"),
                Contains(AllOf(HasSubstr("of \"bolt\" is "), HasSubstr(" in the model and "))));
}

TEST_F(ReadBack, AMovedInstanceDiffers)
{
    auto const found = differencesWith("3.9370078[0-9]*,0.,0.", "3.94,0.,0.");
    EXPECT_THAT(found, Contains(HasSubstr("The greatest x is 100 in the model and 100.07")));
    EXPECT_THAT(found, Contains(HasSubstr("The centre less that in the model is 0")));
    EXPECT_THAT(found, Not(Contains(HasSubstr("\"plate\""))));
}

TEST_F(ReadBack, AnotherNameDiffers)
{
    EXPECT_THAT(differencesWith("PRODUCT\\('plate','plate'", "PRODUCT('plate','plaice'"),
                Contains("The file lacks 1 of the products: \"plate\"."));
}

TEST_F(ReadBack, AnotherInstanceNameDiffers)
{
    EXPECT_THAT(differencesWith("'turned plate'", "'turned'"),
                ElementsAre("The file lacks 1 of the instance names: \"turned plate\"."));
}

TEST_F(ReadBack, AnotherColourDiffers)
{
    EXPECT_THAT(differencesWith("DRAUGHTING_PRE_DEFINED_COLOUR\\('green'\\)",
                                "DRAUGHTING_PRE_DEFINED_COLOUR('yellow')"),
                ElementsAre("The file lacks 1 of the colours: \"0 255 0 255 \"."));
}

TEST_F(ReadBack, AnotherColourOfAnInstanceIsALoss)
{
    EXPECT_THAT(differencesWith("DRAUGHTING_PRE_DEFINED_COLOUR\\('blue'\\)",
                                "DRAUGHTING_PRE_DEFINED_COLOUR('yellow')"),
                IsEmpty());
    EXPECT_THAT(step::lostInstanceFacts(inventoryOf(m_Files / "rig.step"),
                                        inventoryOf(m_Files / "damaged.step")),
                ElementsAre("colour 0 0 255 255 of an instance of \"pair\""));
}

TEST_F(ReadBack, AnotherLayerDiffers)
{
    EXPECT_THAT(differencesWith("PRESENTATION_LAYER_ASSIGNMENT\\('base'",
                                "PRESENTATION_LAYER_ASSIGNMENT('top'"),
                ElementsAre("The file lacks 1 of the layers: \"base\"."));
}

TEST_F(ReadBack, AMissingFaceDiffers)
{
    EXPECT_THAT(differencesWith("CLOSED_SHELL\\('',\\(#[0-9]+,", "CLOSED_SHELL('',("),
                Contains("The number of faces of \"plate\" is 6 in the model and 5 in the file."));
}

} // namespace
