#include "process/scripted_host.h"
#include "support/leftovers.h"
#include "support/models.h"
#include "support/segments.h"

#include <keld-transl/process/server.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace transl_tk {
namespace {

using testing::ElementsAre;

class Export : public testing::Test
{
protected:
    Export()
    {
        m_Host.m_Segment = tests::segmentName();
        m_Host.m_TransferModel = [] { Point3D::create(7, 1, 2, 3); };
    }

    unsigned write(std::string const & script, std::string const & file = "out.xyz")
    {
        m_Host.m_Command = tests::scriptedCommand(script);
        m_Host.write(file, 2);
        EXPECT_FALSE(Server::isOpen());
        EXPECT_FALSE(Pool::hasInstance());
        return m_Host.serverExitStatus();
    }

    std::string endMark() const { return "; touch " + (m_Files / "ended"); }
    bool reachedEnd() const { return m_Files.names().count("ended") != 0; }

    tests::ScopedEnvironment m_Grace{"KELD_GRACE_MS", "300"};
    tests::LeftoverGuard m_Guard;
    tests::TemporaryDirectory m_Files;
    tests::ExportHost m_Host;
};

TEST_F(Export, NamesSizeAndSegmentOfTheModel)
{
    EXPECT_EQ(write("options; read; expect s out.xyz; frame 123; read; expect e 136, " +
                    m_Host.m_Segment +
                    "; frame 121 i32 70; frame 120 i32 8; read; expect x ; frame 126; read; "
                    "expect q; frame 126" +
                    endMark()),
              8U);
    EXPECT_TRUE(reachedEnd());
    EXPECT_THAT(m_Host.m_Notes,
                ElementsAre("fill options", "progress 10", "progress 15", "transfer model",
                            "progress 50", "progress 70", "progress 90"));
}

TEST_F(Export, TheModelStandsInTheSegmentAndThePoolIsGone)
{
    tests::Bytes bytes;
    struct Looking : tests::ExportHost
    {
        bool onSuccess(char * buffer, int & position, bool const & hasPayload, int & id) override
        {
            m_Bytes = tests::segmentBytes(m_Segment);
            m_HadPool = Pool::hasInstance();
            return ClientOut::onSuccess(buffer, position, hasPayload, id);
        }
        tests::Bytes m_Bytes;
        bool m_HadPool = true;
    } host;
    host.m_Segment = m_Host.m_Segment;
    host.m_TransferModel = m_Host.m_TransferModel;
    host.m_Command = tests::scriptedCommand(
        "read; frame 123; read; frame 120 i32 8; read; frame 126; read; frame 126");
    host.write("out.xyz", 1);
    EXPECT_EQ(host.m_Bytes.size(), 136U);
    EXPECT_FALSE(host.m_HadPool);
}

TEST_F(Export, AnEmptyModelIsNoFailure)
{
    m_Host.m_TransferModel = nullptr;
    EXPECT_EQ(write("read; frame 123; read; expect e 108, " + m_Host.m_Segment +
                    "; frame 120 i32 8; read; frame 126; read; frame 126" + endMark()),
              8U);
    EXPECT_TRUE(reachedEnd());
}

TEST_F(Export, AnEmptySegmentNameIsSentWithTheSize)
{
    m_Host.m_Segment.clear();
    EXPECT_EQ(write("read; frame 123; read; expect e 136, ; frame 122 i32 5; read; expect x ; "
                    "frame 126; read; frame 126" +
                    endMark()),
              5U);
    EXPECT_TRUE(reachedEnd());
}

TEST_F(Export, AnExitBringsItsStatusAndNoProgress)
{
    EXPECT_EQ(write("read; frame 123; read; frame 122 i32 1; read; expect x ; frame 126; read; "
                    "frame 126" +
                    endMark()),
              1U);
    EXPECT_TRUE(reachedEnd());
    EXPECT_EQ(m_Host.serverExitStatusMsg(), "Export procedure failed");
    EXPECT_EQ(m_Host.m_Notes.back(), "progress 50");
}

TEST_F(Export, ASecondRunStartsFromTheStatusOfTheFirst)
{
    EXPECT_EQ(write("read; frame 122 i32 3; read; frame 126; read; frame 126"), 3U);
    EXPECT_EQ(write("exit 0"), 3U);
}

TEST_F(Export, ATakenSegmentNameFailsAndIsNotNamedToTheTranslator)
{
    tests::ScopedSegment const taken(m_Host.m_Segment, tests::Bytes(4, 9));
    EXPECT_EQ(
        write("read; frame 123; read; expect x ; frame 126; read; expect q; frame 126" + endMark()),
        0U);
    EXPECT_TRUE(reachedEnd());
    EXPECT_NE(Server::exchangeFailure().find("the name is taken"), std::string::npos);
}

TEST_F(Export, TheOptionsAreTheClientsOwn)
{
    m_Host.getOptions().setSpotweldDiameter(3.5);
    EXPECT_EQ(m_Host.getOptions().getSpotweldDiameter(), 3.5);
    EXPECT_EQ(m_Host.getMode(), "export");
}

TEST_F(Export, PercentSignsInTheSegmentNameAreNotDoubled)
{
    m_Host.m_Segment += "%%d%d";
    // Two of them come out as one, as in any text that is sent.
    std::string const received = m_Host.m_Segment.substr(0, m_Host.m_Segment.find('%')) + "%d%d";
    EXPECT_EQ(write("read; frame 123; read; expect e 136, " + received +
                    "; frame 120 i32 8; read; frame 126; read; frame 126" + endMark()),
              8U);
    EXPECT_TRUE(reachedEnd());
}

struct Death
{
    char const * name;
    char const * script;
};

class ExportDeath : public Export, public testing::WithParamInterface<Death>
{};

TEST_P(ExportDeath, LeavesNothingBehind)
{
    EXPECT_EQ(write(GetParam().script), 8U);
}

INSTANTIATE_TEST_SUITE_P(
    Stages, ExportDeath,
    testing::Values(Death{"AtStart", "exit 1"}, Death{"BeforeAcceptance", "options; read; die 11"},
                    Death{"AfterAcceptance", "read; frame 123; die 9"},
                    Death{"WithTheModel", "read; frame 123; read; die 9"},
                    Death{"AfterSuccess", "read; frame 123; read; frame 120 i32 8; read; die 6"},
                    Death{"NeverAnsweringQuit", "read; frame 123; read; frame 126; forever"}),
    [](auto const & death) { return death.param.name; });

} // namespace
} // namespace transl_tk
