#include "support/leftovers.h"
#include "support/report_capture.h"
#include "support/slots.h"

#include <keld-common/channel.h>
#include <keld-transl/process/exec_paths.h>

#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <vector>

using tests::ReportCapture;
using tests::ScopedEnvironment;
using tests::TemporaryDirectory;
using transl_tk::ExecPaths;

namespace {

std::vector<std::string> keptPaths;

} // namespace

// Stands before the platform library's function of this name and notes what it is given.
extern "C" void ServerSetOldPath(char const * path)
{
    static auto const platform =
        reinterpret_cast<void (*)(char const *)>(dlsym(RTLD_NEXT, "ServerSetOldPath"));
    keptPaths.emplace_back(path);
    platform(path);
}

namespace {

/// A translator of a host.
class HostPaths : public ExecPaths
{
public:
    HostPaths() : ExecPaths("HOST_LIB_PATH") {}
    std::string localName() override { return "local"; }
    std::string installationName() override { return "installed"; }
    std::string linuxExecLocal() override { return "/linux_local"; }
    std::string linuxExecInstallation() override { return "/linux_installed"; }

    using ExecPaths::installationExec;
    using ExecPaths::installationPath;
    using ExecPaths::localExec;
    using ExecPaths::localPath;
    using ExecPaths::sharedFolder;
};

/// The folder of the test is the working directory, so that "C:/x" is a path in it. No variable
/// that a translator is found through is set.
class ExecPathsTest : public testing::Test
{
protected:
    ExecPathsTest() : m_Old(std::filesystem::current_path())
    {
        std::filesystem::current_path(m_Directory.path());
    }
    ~ExecPathsTest() override { std::filesystem::current_path(m_Old); }

    static void makeFile(std::filesystem::path const & path)
    {
        if (path.has_parent_path())
            std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << "file";
    }

    TemporaryDirectory m_Directory;
    HostPaths m_Paths;
    ReportCapture m_Report;

private:
    std::filesystem::path m_Old;
    ScopedEnvironment m_Shared{"KELD_SHARED_DIR", std::nullopt};
    ScopedEnvironment m_Exec{"VORN_EXEC_DIR", std::nullopt};
    ScopedEnvironment m_Library{"HOST_LIB_PATH", std::nullopt};
};

} // namespace

TEST_F(ExecPathsTest, FieldsBeginAsTold)
{
    EXPECT_TRUE(m_Paths.m_Is64Bit);
    EXPECT_EQ(m_Paths.m_LibPathVariable, "HOST_LIB_PATH");
    EXPECT_EQ(m_Paths.m_System, 0U);
    EXPECT_FALSE(m_Paths.m_Debug);
    EXPECT_FALSE(m_Paths.isInstalled());
    EXPECT_EQ(m_Report.text(), "");
}

TEST_F(ExecPathsTest, DirectoriesDependOnTheSystem)
{
    std::string const expected[] = {"/", "/bin", "/bin", "", ""};
    for (unsigned int system = 0; system < 5; ++system) {
        m_Paths.m_System = system;
        EXPECT_EQ(m_Paths.localDirectory(), "/cad_translators");
        EXPECT_EQ(m_Paths.installationDirectory(), expected[system]);
    }
    EXPECT_EQ(m_Report.text(), "");
}

TEST_F(ExecPathsTest, InstallationPathDependsOnSystemAndBits)
{
    EXPECT_EQ(m_Paths.installationPath(), "//win64/cadexe/");
    EXPECT_EQ(m_Paths.installationExec(), "//win64/cadexe/installed");
    m_Paths.m_Is64Bit = false;
    EXPECT_EQ(m_Paths.installationPath(), "//win32/cadexe/");
    m_Paths.m_System = 1;
    EXPECT_EQ(m_Paths.installationPath(), "/bin/");
    m_Paths.m_System = 2;
    EXPECT_EQ(m_Paths.installationExec(), "/bin/installed");
    m_Paths.m_System = 3;
    EXPECT_EQ(m_Paths.installationPath(), "");
    EXPECT_EQ(m_Report.text(), "|INSTALL_LOG: Installation Path: //win64/cadexe/\n"
                               "|INSTALL_LOG: Installation Path: //win64/cadexe/\n"
                               "|INSTALL_LOG: Installation Path: //win32/cadexe/\n"
                               "|INSTALL_LOG: Installation Path: /bin/\n"
                               "|INSTALL_LOG: Installation Path: /bin/\n"
                               "|INSTALL_LOG: Installation Path: \n");
}

TEST_F(ExecPathsTest, LocalPathDependsOnSystemAndDebug)
{
    EXPECT_EQ(m_Paths.localPath(), "/cad_translators/Release/");
    m_Paths.m_Debug = true;
    EXPECT_EQ(m_Paths.localPath(), "/cad_translators/Debug/");
    EXPECT_EQ(m_Paths.localExec(), "/cad_translators/Debug/local");
    m_Paths.m_System = 1;
    EXPECT_EQ(m_Paths.localPath(), "/");
    m_Paths.m_System = 2;
    EXPECT_EQ(m_Paths.localExec(), "/local");
    m_Paths.m_System = 3;
    EXPECT_EQ(m_Paths.localPath(), "");
    EXPECT_EQ(m_Report.text(), "");
}

TEST_F(ExecPathsTest, SharedFolderIsEmptyWithoutVariables)
{
    EXPECT_EQ(m_Paths.sharedFolder(), "");
    EXPECT_EQ(m_Report.text(), "|EXEC_LOG: keld_shared location: \n");
}

TEST_F(ExecPathsTest, SharedFolderIsTheOneOfItsOwnVariable)
{
    std::filesystem::create_directory("shared");
    ScopedEnvironment const shared("KELD_SHARED_DIR", "shared");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    EXPECT_EQ(m_Paths.sharedFolder(), "shared");
    EXPECT_EQ(m_Report.text(), "|EXEC_LOG: keld_shared location: shared\n"
                               "|EXEC_LOG: Keld Shared location: shared\n");
}

TEST_F(ExecPathsTest, SharedFolderStandsBesideTheExecutables)
{
    std::filesystem::create_directories("exec");
    std::filesystem::create_directories("shared_v23.0.0");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    EXPECT_EQ(m_Paths.sharedFolder(), "exec/../shared_v23.0.0");
    EXPECT_EQ(m_Report.text(), "|EXEC_LOG: keld_shared location: exec\n"
                               "|EXEC_LOG: Keld Shared location: exec/../shared_v23.0.0\n");
}

TEST_F(ExecPathsTest, SharedFolderThatIsMissingIsEmpty)
{
    ScopedEnvironment const shared("KELD_SHARED_DIR", "missing");
    EXPECT_EQ(m_Paths.sharedFolder(), "");
    EXPECT_EQ(m_Report.text(), "|EXEC_LOG: keld_shared location: missing\n"
                               "|EXEC_LOG: Cannot access keld_shared location: missing\n");
}

TEST_F(ExecPathsTest, CommandIsEmptyWithoutVariables)
{
    for (unsigned int system : {0U, 1U, 2U, 3U}) {
        m_Paths.m_System = system;
        EXPECT_EQ(m_Paths.calcExecCmd(), "");
    }
    EXPECT_EQ(m_Report.text(), "|EXEC_LOG: keld_shared location: \n");
}

TEST_F(ExecPathsTest, CommandIsTheOneOfTheSharedFolder)
{
    makeFile("shared/win64/cadexe/installed");
    ScopedEnvironment const shared("KELD_SHARED_DIR", "shared");
    EXPECT_EQ(m_Paths.calcExecCmd(), "shared\\\\win64\\cadexe\\installed");
    EXPECT_EQ(m_Report.text(), "|EXEC_LOG: keld_shared location: shared\n"
                               "|EXEC_LOG: Keld Shared location: shared\n"
                               "|INSTALL_LOG: Installation Path: //win64/cadexe/\n"
                               "|EXEC_LOG: Executable path: shared//win64/cadexe/installed\n");
}

TEST_F(ExecPathsTest, CommandThatTheSharedFolderLacksIsGivenUnchangedWithoutAnotherVariable)
{
    std::filesystem::create_directory("shared");
    ScopedEnvironment const shared("KELD_SHARED_DIR", "shared");
    EXPECT_EQ(m_Paths.calcExecCmd(), "shared//win64/cadexe/installed");
    EXPECT_EQ(m_Report.text(),
              "|EXEC_LOG: keld_shared location: shared\n"
              "|EXEC_LOG: Keld Shared location: shared\n"
              "|INSTALL_LOG: Installation Path: //win64/cadexe/\n"
              "|EXEC_LOG: Executable path: shared//win64/cadexe/installed\n"
              "|EXEC_LOG: Cannot access path of executable: shared//win64/cadexe/installed\n");
}

TEST_F(ExecPathsTest, CommandIsNextTheOneOfTheInstallation)
{
    std::filesystem::create_directory("shared");
    makeFile("C:/x/win64/cadexe/installed");
    ScopedEnvironment const shared("KELD_SHARED_DIR", "shared");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "C:/x");
    EXPECT_EQ(m_Paths.calcExecCmd(), "C:\\x\\\\win64\\cadexe\\installed");
    EXPECT_EQ(m_Report.text(),
              "|EXEC_LOG: keld_shared location: shared\n"
              "|EXEC_LOG: Keld Shared location: shared\n"
              "|INSTALL_LOG: Installation Path: //win64/cadexe/\n"
              "|EXEC_LOG: Executable path: shared//win64/cadexe/installed\n"
              "|EXEC_LOG: Cannot access path of executable: shared//win64/cadexe/installed\n"
              "|INSTALL_LOG: Installation Path: //win64/cadexe/\n"
              "|EXEC_LOG: Executable path: C:/x//win64/cadexe/installed\n");
}

TEST_F(ExecPathsTest, CommandIsAtLastTheLocalOneUntested)
{
    ScopedEnvironment const exec("VORN_EXEC_DIR", "C:/x");
    EXPECT_EQ(m_Paths.calcExecCmd(), "C:\\x\\cad_translators\\Release\\local");
    EXPECT_EQ(m_Report.text(),
              "|EXEC_LOG: keld_shared location: C:/x\n"
              "|EXEC_LOG: Cannot access keld_shared location: C:/x/../shared_v23.0.0\n"
              "|INSTALL_LOG: Installation Path: //win64/cadexe/\n"
              "|EXEC_LOG: Executable path: C:/x//win64/cadexe/installed\n"
              "|EXEC_LOG: Cannot access path of executable: C:/x//win64/cadexe/installed\n"
              "|EXEC_LOG: Try the local executable in: C:/x/cad_translators/Release/local\n");
}

TEST_F(ExecPathsTest, ScriptCommandDoesNotTryTheSharedFolder)
{
    makeFile("shared/bin/installed");
    makeFile("exec/bin/installed");
    ScopedEnvironment const shared("KELD_SHARED_DIR", "shared");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    for (unsigned int system : {1U, 2U}) {
        ReportCapture const report;
        m_Paths.m_System = system;
        EXPECT_EQ(m_Paths.calcExecCmd(), "exec/bin/installed");
        EXPECT_EQ(report.text(), "|INSTALL_LOG: Installation Path: /bin/\n"
                                 "|EXEC_LOG: Executable path: exec/bin/installed\n");
    }
}

TEST_F(ExecPathsTest, ScriptCommandIsAtLastTheLocalOneUntested)
{
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    m_Paths.m_System = 1;
    EXPECT_EQ(m_Paths.calcExecCmd(), "exec/local");
    EXPECT_EQ(m_Report.text(), "|INSTALL_LOG: Installation Path: /bin/\n"
                               "|EXEC_LOG: Executable path: exec/bin/installed\n"
                               "|EXEC_LOG: Cannot access path of executable: exec/bin/installed\n"
                               "|EXEC_LOG: Try the local executable in: exec/local\n");
}

TEST_F(ExecPathsTest, CommandRepeatsItsLines)
{
    m_Paths.calcExecCmd();
    m_Paths.calcExecCmd();
    EXPECT_EQ(m_Report.text(), "|EXEC_LOG: keld_shared location: \n"
                               "|EXEC_LOG: keld_shared location: \n");
}

TEST_F(ExecPathsTest, LibraryPathIsEmptyWithoutItsVariable)
{
    keptPaths.clear();
    EXPECT_EQ(m_Paths.calcLibPath(), "");
    EXPECT_EQ(m_Report.text(),
              "|LIB_LOG: Windows Translator Path read from [ HOST_LIB_PATH] not found\n"
              "|LIB_LOG: Windows Translator library path: \n");
    EXPECT_TRUE(keptPaths.empty());
}

TEST_F(ExecPathsTest, LibraryPathIsFollowedByTheSearchPathWhichIsKept)
{
    keptPaths.clear();
    ScopedEnvironment const library("HOST_LIB_PATH", "C:/jt");
    ScopedEnvironment const path("PATH", "P");
    EXPECT_EQ(m_Paths.calcLibPath(), "C:/jt/;P;");
    EXPECT_EQ(m_Report.text(), "|LIB_LOG: Windows Translator library path: C:/jt/;P;\n");
    EXPECT_EQ(keptPaths, std::vector<std::string>{"P"});
}

TEST_F(ExecPathsTest, LibraryPathStandsAloneWithoutASearchPath)
{
    keptPaths.clear();
    ScopedEnvironment const library("HOST_LIB_PATH", "C:/jt");
    ScopedEnvironment const path("PATH", std::nullopt);
    EXPECT_EQ(m_Paths.calcLibPath(), "C:/jt/;");
    EXPECT_TRUE(keptPaths.empty());
}

TEST_F(ExecPathsTest, ExecFileIsTheCommandsFile)
{
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    m_Paths.m_System = 1;
    EXPECT_FALSE(m_Paths.checkExecFile());
    makeFile("exec/local");
    EXPECT_TRUE(m_Paths.checkExecFile());
    EXPECT_EQ(m_Report.text(), "|INSTALL_LOG: Installation Path: /bin/\n"
                               "|EXEC_LOG: Executable path: exec/bin/installed\n"
                               "|EXEC_LOG: Cannot access path of executable: exec/bin/installed\n"
                               "|EXEC_LOG: Try the local executable in: exec/local\n"
                               "|EXEC_LOG: Exec command: exec/local | (0)\n"
                               "|INSTALL_LOG: Installation Path: /bin/\n"
                               "|EXEC_LOG: Executable path: exec/bin/installed\n"
                               "|EXEC_LOG: Cannot access path of executable: exec/bin/installed\n"
                               "|EXEC_LOG: Try the local executable in: exec/local\n"
                               "|EXEC_LOG: Exec command: exec/local | (1)\n");
}

TEST_F(ExecPathsTest, ExecFileOfNoCommandIsMissing)
{
    m_Paths.m_System = 2;
    EXPECT_FALSE(m_Paths.checkExecFile());
    m_Paths.m_System = 1;
    EXPECT_FALSE(m_Paths.checkExecFile());
    EXPECT_EQ(m_Report.text(),
              "|EXEC_LOG: Exec command:  | (0)\n|EXEC_LOG: Exec command:  | (0)\n");
}

TEST_F(ExecPathsTest, LinuxExecFileStandsBesideTheScript)
{
    makeFile("exec/bin/installed");
    makeFile("exec/bin/linux_installed");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    m_Paths.m_System = 2;
    EXPECT_TRUE(m_Paths.checkExecFile());
    EXPECT_EQ(m_Report.text(), "|INSTALL_LOG: Installation Path: /bin/\n"
                               "|EXEC_LOG: Executable path: exec/bin/installed\n"
                               "|EXEC_LOG: Exec command: exec/bin/linux_installed | (1)\n");
}

TEST_F(ExecPathsTest, LinuxExecFileIsNextTheLocalOne)
{
    makeFile("exec/bin/installed");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    m_Paths.m_System = 2;
    {
        ReportCapture const report;
        EXPECT_FALSE(m_Paths.checkExecFile());
        EXPECT_EQ(report.text(),
                  "|INSTALL_LOG: Installation Path: /bin/\n"
                  "|EXEC_LOG: Executable path: exec/bin/installed\n"
                  "|EXEC_LOG: Cannot access path of Linux executable: exec/bin/linux_installed\n"
                  "|EXEC_LOG: Try the local Linux executable in: exec/bin/linux_local | (0)\n"
                  "|EXEC_LOG: Exec command: exec/bin/linux_local | (0)\n");
    }
    makeFile("exec/bin/linux_local");
    ReportCapture const report;
    EXPECT_TRUE(m_Paths.checkExecFile());
    EXPECT_TRUE(report.text().ends_with(
        "|EXEC_LOG: Try the local Linux executable in: exec/bin/linux_local | (1)\n"
        "|EXEC_LOG: Exec command: exec/bin/linux_local | (1)\n"));
}

TEST_F(ExecPathsTest, LinuxExecFileNeedsACommandWithASlash)
{
    struct NoSlash : HostPaths
    {
        std::string calcExecCmd() override { return "command"; }
    };
    makeFile("command");
    makeFile("linux_installed");
    NoSlash paths;
    paths.m_System = 2;
    EXPECT_FALSE(paths.checkExecFile());
    EXPECT_EQ(m_Report.text(), "|EXEC_LOG: Exec command: command | (0)\n");
    paths.m_System = 1;
    EXPECT_TRUE(paths.checkExecFile());
}

TEST(ExecPaths, OperationsStandInTableOrderBeforeTheDestructor)
{
    using tests::slotOf;
    struct Derived : HostPaths
    {
        virtual void behind() {}
    };
    EXPECT_EQ(slotOf(&ExecPaths::calcExecCmd), 0U);
    EXPECT_EQ(slotOf(&ExecPaths::localDirectory), 1U);
    EXPECT_EQ(slotOf(&ExecPaths::installationDirectory), 2U);
    EXPECT_EQ(slotOf(&ExecPaths::isInstalled), 3U);
    EXPECT_EQ(slotOf(&ExecPaths::calcLibPath), 4U);
    EXPECT_EQ(slotOf(&ExecPaths::localName), 5U);
    EXPECT_EQ(slotOf(&ExecPaths::installationName), 6U);
    EXPECT_EQ(slotOf(&ExecPaths::linuxExecLocal), 7U);
    EXPECT_EQ(slotOf(&ExecPaths::linuxExecInstallation), 8U);
    EXPECT_EQ(slotOf(&Derived::behind), 11U);
}
