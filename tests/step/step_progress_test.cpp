// What the host hears while the translator works, and that it can stop it at any time.
#include "step/made_documents.h"
#include "step/made_files.h"
#include "step/translator_process.h"
#include "support/leftovers.h"
#include "support/segments.h"

#include <keld-transl/process/exec_io.h>
#include <keld-transl/process/rwfd.h>

#include <BRepPrimAPI_MakeTorus.hxx>
#include <BRep_Builder.hxx>
#include <TopoDS_Compound.hxx>
#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using tests::TranslatorProcess;
using Frame = TranslatorProcess::Frame;

constexpr char Progress = transl_tk::FrameProgress;
constexpr char SignOfLife = transl_tk::FrameSkip;
constexpr char Success = transl_tk::FrameSuccess;

/// The translator ends with this when its host goes away while it works.
constexpr int Stopped = 1;

class StepProgress : public testing::Test
{
protected:
    /// A STEP file that takes the kernel longest to parse.
    std::string longFile() const
    {
        std::string const path = m_Files / "long.step";
        tests::writeBlock(path);
        std::string points;
        for (int i = 0; i < 200000; ++i)
            points += "#" + std::to_string(10000 + i) + " = CARTESIAN_POINT('',(1.,2.,3.));\n";
        tests::replaceInFile(path, "ENDSEC;\nEND-ISO", points + "ENDSEC;\nEND-ISO");
        return path;
    }

    /// One that takes it longest to transfer: many tori in one part.
    std::string fullFile() const
    {
        std::string const path = m_Files / "full.step";
        TopoDS_Compound all;
        BRep_Builder builder;
        builder.MakeCompound(all);
        for (int i = 0; i < 120; ++i)
            builder.Add(all, BRepPrimAPI_MakeTorus(10 + 0.01 * i, 3).Shape());
        tests::writeShape(all, path);
        return path;
    }

    static void askForFacets()
    {
        transl_tk::IExecIO * const options = transl_tk::IExecIO::create();
        options->addOption(
            transl_tk::IOption::create("deflection", transl_tk::IValue::create(0.1), ""));
        options->write();
        transl_tk::IExecIO::destruct(options);
    }

    tests::LeftoverGuard m_Guard;
    tests::TemporaryDirectory m_Files;
    std::string m_Segment = tests::segmentName();
};

std::vector<int> percents(std::vector<Frame> const & frames)
{
    std::vector<int> result;
    for (Frame const & frame : frames) {
        if (frame.key == Progress)
            result.push_back(frame.value);
    }
    return result;
}

/// Frames up to the answer, which is the last one.
std::vector<Frame> untilTheAnswer(TranslatorProcess & translator)
{
    std::vector<Frame> frames;
    do
        frames.push_back(translator.receive());
    while (frames.back().key == Progress || frames.back().key == SignOfLife);
    return frames;
}

TEST_F(StepProgress, GrowsFromNothingToAll)
{
    std::string const path = fullFile();
    askForFacets();
    TranslatorProcess translator;
    translator.read(path, m_Segment);
    auto const frames = untilTheAnswer(translator);
    EXPECT_EQ(Success, frames.back().key);
    translator.finish();
    translator.receiveRest();
    EXPECT_EQ(0, translator.wait());

    std::vector<int> const shown = percents(frames);
    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(0, shown.front());
    EXPECT_EQ(100, shown.back());
    EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end()));
    // The transfer's, and the tessellation's of the only part.
    EXPECT_THAT(shown, testing::Contains(testing::AllOf(testing::Gt(20), testing::Lt(60))));
    EXPECT_THAT(shown, testing::Contains(testing::AllOf(testing::Gt(60), testing::Lt(90))));
}

TEST_F(StepProgress, IsASignOfLifeWhileTheKernelParses)
{
    std::string const path = longFile();
    TranslatorProcess translator;
    translator.read(path, m_Segment);
    auto const frames = untilTheAnswer(translator);
    translator.finish();
    translator.receiveRest();
    EXPECT_EQ(0, translator.wait());
    auto const alive = std::find_if(frames.begin(), frames.end(),
                                    [](Frame const & frame) { return frame.key == SignOfLife; });
    ASSERT_NE(frames.end(), alive);
    EXPECT_THAT(percents({frames.begin(), alive}), testing::ElementsAre(0));
}

TEST_F(StepProgress, AStopEndsTheTranslatorWhileTheKernelParses)
{
    std::string const path = longFile();
    TranslatorProcess translator;
    translator.read(path, m_Segment);
    Frame frame = translator.receive();
    while (frame.key == Progress)
        frame = translator.receive();
    ASSERT_EQ(SignOfLife, frame.key);
    translator.hangUp();
    EXPECT_THAT(percents(translator.receiveRest()), testing::IsEmpty());
    EXPECT_EQ(Stopped, translator.wait());
}

/// Lets the translator come beyond a percentage and stops it there.
void stopBeyond(TranslatorProcess & translator, int percent)
{
    Frame frame = translator.receive();
    while (frame.key == SignOfLife || (frame.key == Progress && frame.value <= percent))
        frame = translator.receive();
    ASSERT_EQ(Progress, frame.key);
    translator.hangUp();
    for (Frame const & later : translator.receiveRest())
        EXPECT_NE(Success, later.key);
    EXPECT_EQ(Stopped, translator.wait());
}

TEST_F(StepProgress, AStopEndsTheTranslatorWhileTheKernelTransfers)
{
    std::string const path = fullFile();
    TranslatorProcess translator;
    translator.read(path, m_Segment);
    stopBeyond(translator, 20);
}

TEST_F(StepProgress, AStopEndsTheTranslatorWhileTheKernelTessellates)
{
    std::string const path = fullFile();
    askForFacets();
    TranslatorProcess translator;
    translator.read(path, m_Segment);
    stopBeyond(translator, 60);
}

} // namespace
