// The real host with the translator: what is known of a run in the middle, and its end there.
#include "process/keld_program.h"

#include <keld-translator-kit/breadcrumbs.h>

#include <BRepPrimAPI_MakeBox.hxx>
#include <BRep_Builder.hxx>
#include <STEPControl_Writer.hxx>
#include <TopoDS_Compound.hxx>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <optional>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

struct Place
{
    std::string phase;
    std::string entity;
};

/// Where the translator of the running program `host` is.
std::optional<Place> placeIn(pid_t host)
{
    std::error_code error;
    std::string const folder = "/proc/" + std::to_string(host) + "/fd";
    for (auto const & entry : std::filesystem::directory_iterator(folder, error)) {
        auto const target = std::filesystem::read_symlink(entry.path(), error);
        if (target.string().find("keld_breadcrumbs") == std::string::npos)
            continue;
        translator_kit::Breadcrumbs crumbs = {};
        std::ifstream(entry.path(), std::ios::binary)
            .read(reinterpret_cast<char *>(&crumbs), sizeof(crumbs));
        return Place{crumbs.phase, crumbs.entity};
    }
    return std::nullopt;
}

bool hasEnded(pid_t process)
{
    siginfo_t info = {};
    return waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) != 0 ||
           info.si_pid != 0;
}

/// Looks where the translator is until `wanted` says that it is enough; false when the program ends
/// before.
bool waitForPlace(pid_t host, std::function<bool(Place const &)> const & wanted)
{
    while (!hasEnded(host)) {
        auto const place = placeIn(host);
        if (place && wanted(*place))
            return true;
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    return false;
}

/// The parent of a process, 0 when it has gone.
pid_t parentOf(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string word; status >> word;) {
        pid_t parent = 0;
        if (word == "PPid:" && status >> parent)
            return parent;
    }
    return 0;
}

class StepIsolation : public testing::Test
{
protected:
    void SetUp() override { m_Keld.install("step", KELD_TEST_STEP_TRANSLATOR); }

    LeftoverGuard m_Guard;
    KeldProgram m_Keld;
};

/// A file whose parse takes long.
std::string manyPoints()
{
    std::string text = "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
                       "FILE_NAME('','',(''),(''),'','','');\n"
                       "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nDATA;\n";
    for (int i = 1; i <= 400000; ++i)
        text += "#" + std::to_string(i) + "=CARTESIAN_POINT('',(1.,2.,3.));\n";
    return text + "ENDSEC;\nEND-ISO-10303-21;\n";
}

TEST_F(StepIsolation, AnInterruptEndsAParse)
{
    m_Keld.file("points.step", manyPoints());
    pid_t const program = m_Keld.start({"import", "-q", "points.step"});
    ASSERT_TRUE(waitForPlace(program, [](Place const & place) { return place.phase == "parse"; }));

    kill(program, SIGINT);

    Ended const ended = m_Keld.finish();
    EXPECT_EQ(SIGINT, ended.signal);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ("", ended.err);
    EXPECT_EQ(std::set<std::string>(), m_Keld.temporaryFiles());
}

TEST_F(StepIsolation, ATranslatorThatIsKilledInAParseIsTold)
{
    m_Keld.file("points.step", manyPoints());
    pid_t const program = m_Keld.start({"import", "-q", "points.step"});
    ASSERT_TRUE(waitForPlace(program, [](Place const & place) { return place.phase == "parse"; }));

    for (auto const & entry : std::filesystem::directory_iterator("/proc")) {
        pid_t const process = std::atoi(entry.path().filename().c_str());
        if (process > 0 && parentOf(process) == program)
            kill(process, SIGSEGV);
    }

    Ended const ended = m_Keld.finish();
    EXPECT_EQ(4, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("killed by signal 11 (Segmentation fault), in the phase "
                                     "\"parse\"; nothing came of the run.\n"));
}

/// Solids with `count` times six faces.
void writeBoxes(int count, std::string const & path)
{
    TopoDS_Compound all;
    BRep_Builder().MakeCompound(all);
    for (int i = 0; i < count; ++i)
        BRep_Builder().Add(all, BRepPrimAPI_MakeBox(gp_Pnt(2 * i, 0, 0), 1, 1, 1).Shape());
    STEPControl_Writer writer;
    writer.Transfer(all, STEPControl_AsIs);
    ASSERT_EQ(IFSelect_RetDone, writer.Write(path.c_str()));
}

TEST_F(StepIsolation, AFaceIsToldByItsEntityInTheFile)
{
    writeBoxes(60, m_Keld.files() / "boxes.step");
    std::string const text = tests::contentOf(m_Keld.files() / "boxes.step");
    std::string found;
    auto const isFace = [&found](Place const & place) {
        if (place.phase == "mapping" && place.entity.find(" in part \"") != std::string::npos)
            found = place.entity;
        return !found.empty();
    };
    // The mapping takes a moment of the whole, which is missed now and then.
    for (int round = 0; round < 20 && found.empty(); ++round) {
        waitForPlace(m_Keld.start({"import", "-q", "boxes.step"}), isFace);
        EXPECT_EQ(0, m_Keld.finish().code);
    }
    std::string const entity = found.substr(0, found.find(' '));
    EXPECT_THAT(text, ContainsRegex("\n" + entity + " = ADVANCED_FACE"));
}

} // namespace
