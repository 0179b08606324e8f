#include "step_paths.h"
#include "support/leftovers.h"
#include "support/report_capture.h"
#include "support/slots.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

using keld::StepPaths;
using tests::ReportCapture;
using tests::ScopedEnvironment;
using tests::TemporaryDirectory;

namespace {

void makeFile(std::filesystem::path const & path)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << "file";
}

/// The folder of the test is the working directory, "exec" in it the installation.
class StepPathsTest : public testing::Test
{
protected:
    StepPathsTest() : m_Old(std::filesystem::current_path())
    {
        std::filesystem::current_path(m_Directory.path());
    }
    ~StepPathsTest() override { std::filesystem::current_path(m_Old); }

private:
    TemporaryDirectory m_Directory;
    std::filesystem::path m_Old;
    ScopedEnvironment m_Shared{"KELD_SHARED_DIR", std::nullopt};
    ScopedEnvironment m_Exec{"VORN_EXEC_DIR", "exec"};
    ScopedEnvironment m_Library{"STEP_LIB_PATH", std::nullopt};
};

StepPaths pathsFor(unsigned int system, bool is64Bit = true)
{
    StepPaths paths;
    paths.m_System = system;
    paths.m_Is64Bit = is64Bit;
    return paths;
}

void expectNames(StepPaths paths, std::string const & local, std::string const & installation)
{
    EXPECT_EQ(local, paths.localName());
    EXPECT_EQ(installation, paths.installationName());
}

std::string const systemLines = "|System           : 2\n\n";
std::string const commandLines = "|INSTALL_LOG: Installation Path: /bin/\n"
                                 "|EXEC_LOG: Executable path: exec/bin/keld_step.sh\n";

} // namespace

TEST_F(StepPathsTest, NamesAreOfTheSameFamilyAsThoseOfTheProduct)
{
    expectNames(pathsFor(0), "step_translator.exe", "keld_step_win64.exe");
    expectNames(pathsFor(0, false), "step_translator.exe", "keld_step_win32.exe");
    expectNames(pathsFor(1), "keld_step.sh", "keld_step.sh");
    expectNames(pathsFor(1, false), "keld_step.sh", "");
    expectNames(pathsFor(2), "keld_step.sh", "keld_step.sh");
    expectNames(pathsFor(2, false), "keld_step.sh", "keld_step.sh");
    expectNames(pathsFor(3), "", "");
    expectNames(pathsFor(3, false), "", "");
    EXPECT_EQ("STEP_LIB_PATH", StepPaths().m_LibPathVariable);
    EXPECT_EQ("/keld_step_linux_x86_64", StepPaths().linuxExecInstallation());
    EXPECT_EQ("/cad_translators/step_translator", StepPaths().linuxExecLocal());
}

TEST_F(StepPathsTest, CommandOnLinuxIsTheScriptOfTheInstallationOrElseTheLocalOne)
{
    EXPECT_EQ("exec/keld_step.sh", pathsFor(2).calcExecCmd());
    makeFile("exec/bin/keld_step.sh");
    EXPECT_EQ("exec/bin/keld_step.sh", pathsFor(2).calcExecCmd());
}

TEST_F(StepPathsTest, CommandOnWindows)
{
    EXPECT_EQ("exec\\cad_translators\\Release\\step_translator.exe", pathsFor(0).calcExecCmd());
    makeFile("exec/win64/cadexe/keld_step_win64.exe");
    EXPECT_EQ("exec\\\\win64\\cadexe\\keld_step_win64.exe", pathsFor(0).calcExecCmd());
}

TEST_F(StepPathsTest, ExecutableLiesBesideTheScriptOrInTheLocalFolderThere)
{
    makeFile("exec/bin/keld_step.sh");
    EXPECT_FALSE(pathsFor(2).checkExecFile());
    makeFile("exec/bin/cad_translators/step_translator");
    EXPECT_TRUE(pathsFor(2).checkExecFile());
    std::filesystem::remove_all("exec/bin/cad_translators");
    makeFile("exec/bin/keld_step_linux_x86_64");
    EXPECT_TRUE(pathsFor(2).checkExecFile());
}

TEST_F(StepPathsTest, LibraryPathIsThatOfTheVariable)
{
    EXPECT_EQ("", StepPaths().calcLibPath());
    ScopedEnvironment const library("STEP_LIB_PATH", "/occt");
    ScopedEnvironment const path("PATH", "P");
    EXPECT_EQ("/occt/;P;", StepPaths().calcLibPath());
}

TEST_F(StepPathsTest, IsInstalledWithoutAnyVariableOfALibrary)
{
    makeFile("exec/bin/keld_step.sh");
    makeFile("exec/bin/keld_step_linux_x86_64");
    ReportCapture const report;
    EXPECT_EQ(StepPaths::Unknown, StepPaths::m_InstallationStatus);

    EXPECT_TRUE(pathsFor(2).isInstalled());
    EXPECT_EQ(StepPaths::Installed, StepPaths::m_InstallationStatus);
    std::string const first = systemLines + commandLines +
                              "|EXEC_LOG: Exec command: exec/bin/keld_step_linux_x86_64 | (1)\n" +
                              commandLines +
                              "|STEP_LOG: STEP Installation path: exec/bin/keld_step.sh\n";
    EXPECT_EQ(first, report.text());

    std::filesystem::remove_all("exec");
    EXPECT_TRUE(pathsFor(2).isInstalled());
    EXPECT_EQ(first + systemLines, report.text());
}

TEST_F(StepPathsTest, IsNotInstalledWithoutItsExecutableAndNotLookedForAgain)
{
    makeFile("exec/bin/keld_step.sh");
    ReportCapture const report;
    EXPECT_FALSE(pathsFor(2).isInstalled());
    EXPECT_EQ(StepPaths::NotInstalled, StepPaths::m_InstallationStatus);
    EXPECT_TRUE(report.text().ends_with(
        "|STEP_LOG: Exec file check failed or cannot access path: exec/bin/keld_step.sh\n"));

    std::string const first = report.text();
    makeFile("exec/bin/keld_step_linux_x86_64");
    EXPECT_FALSE(pathsFor(2).isInstalled());
    EXPECT_EQ(first, report.text());
}

TEST_F(StepPathsTest, IsNotInstalledWhenTheVariableNamesAFolderThatIsNotThere)
{
    makeFile("exec/bin/keld_step.sh");
    makeFile("exec/bin/keld_step_linux_x86_64");
    ScopedEnvironment const library("STEP_LIB_PATH", "library");
    ReportCapture const report;
    EXPECT_FALSE(pathsFor(2).isInstalled());
    EXPECT_EQ(systemLines + "|STEP_LOG: Exec file check failed or cannot access path: library\n",
              report.text());
}

TEST_F(StepPathsTest, IsInstalledWhenTheVariableNamesAFolder)
{
    makeFile("exec/bin/keld_step.sh");
    makeFile("exec/bin/keld_step_linux_x86_64");
    std::filesystem::create_directory("library");
    ScopedEnvironment const library("STEP_LIB_PATH", "library");
    EXPECT_TRUE(pathsFor(2).isInstalled());
}

TEST(StepPaths, VerdictsHaveTheNumbersOfTheProduct)
{
    EXPECT_EQ(0, StepPaths::InstallationStatus::Unknown);
    EXPECT_EQ(1, StepPaths::InstallationStatus::Installed);
    EXPECT_EQ(2, StepPaths::InstallationStatus::NotInstalled);
    EXPECT_EQ(StepPaths::Unknown, StepPaths::m_InstallationStatus);
    static_assert(sizeof(StepPaths) == sizeof(transl_tk::ExecPaths));
}

TEST(StepPaths, OperationsTakeTheSlotsOfTheBase)
{
    using tests::slotOf;
    EXPECT_EQ(3U, slotOf(&StepPaths::isInstalled));
    EXPECT_EQ(5U, slotOf(&StepPaths::localName));
    EXPECT_EQ(6U, slotOf(&StepPaths::installationName));
    EXPECT_EQ(7U, slotOf(&StepPaths::linuxExecLocal));
    EXPECT_EQ(8U, slotOf(&StepPaths::linuxExecInstallation));
}
