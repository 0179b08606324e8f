#include "support/leftovers.h"
#include "support/report_capture.h"

#include <keld-transl/process/product_paths.h>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <type_traits>

using namespace transl_tk;
using tests::ReportCapture;
using tests::ScopedEnvironment;
using tests::TemporaryDirectory;

namespace {

void makeFile(std::filesystem::path const & path)
{
    if (path.has_parent_path())
        std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << "file";
}

/// The folder of the test is the working directory. No variable of a translator is set.
class ProductPathsTest : public testing::Test
{
protected:
    ProductPathsTest() : m_Old(std::filesystem::current_path())
    {
        std::filesystem::current_path(m_Directory.path());
    }
    ~ProductPathsTest() override { std::filesystem::current_path(m_Old); }

private:
    TemporaryDirectory m_Directory;
    std::filesystem::path m_Old;
    ScopedEnvironment m_Shared{"KELD_SHARED_DIR", std::nullopt};
    ScopedEnvironment m_Exec{"VORN_EXEC_DIR", std::nullopt};
    ScopedEnvironment m_Jt{"JT_OPEN_PATH", std::nullopt};
    ScopedEnvironment m_Ct{"CT_LIB_PATH", std::nullopt};
    ScopedEnvironment m_CtDebug{"CT_LIB_PATH_DBG", std::nullopt};
    ScopedEnvironment m_Rhino{"RHINO_LIB_PATH", std::nullopt};
    ScopedEnvironment m_U3dPdf{"U3DPDF_LIB_PATH", std::nullopt};
};

struct Names
{
    std::string libPathVariable;
    std::string local, installation64, installation32;
    std::string script;
    std::string linuxInstallation, linuxLocal;
};

template <class Paths> void expectNames(Names const & expected)
{
    Paths paths;
    EXPECT_EQ(paths.m_LibPathVariable, expected.libPathVariable);
    EXPECT_EQ(paths.linuxExecInstallation(), expected.linuxInstallation);
    EXPECT_EQ(paths.linuxExecLocal(), expected.linuxLocal);

    EXPECT_EQ(paths.localName(), expected.local);
    EXPECT_EQ(paths.installationName(), expected.installation64);
    paths.m_System = 1;
    EXPECT_EQ(paths.localName(), expected.script);
    EXPECT_EQ(paths.installationName(), expected.script);
    paths.m_System = 2;
    EXPECT_EQ(paths.localName(), expected.script);
    EXPECT_EQ(paths.installationName(), expected.script);
    paths.m_System = 3;
    EXPECT_EQ(paths.localName(), "");
    EXPECT_EQ(paths.installationName(), "");

    paths.m_Is64Bit = false;
    EXPECT_EQ(paths.localName(), "");
    EXPECT_EQ(paths.installationName(), "");
    paths.m_System = 2;
    EXPECT_EQ(paths.localName(), expected.script);
    EXPECT_EQ(paths.installationName(), expected.script);
    paths.m_System = 1;
    EXPECT_EQ(paths.localName(), expected.script);
    EXPECT_EQ(paths.installationName(), "");
    paths.m_System = 0;
    EXPECT_EQ(paths.localName(), expected.local);
    EXPECT_EQ(paths.installationName(), expected.installation32);
}

/// Lines of `calcExecCmd` and `checkExecFile` with system 1, when "exec/bin/<script>" exists.
std::string scriptLines(std::string const & script)
{
    return "|INSTALL_LOG: Installation Path: /bin/\n"
           "|EXEC_LOG: Executable path: exec/bin/" +
           script +
           "\n"
           "|EXEC_LOG: Exec command: exec/bin/" +
           script + " | (1)\n";
}

std::string const systemLines = "|System           : 1\n\n";

/// A translator that is there in full: found once, and then without another look.
template <class Paths>
void expectInstalled(char const * variable, char const * probedFile, char const * script,
                     std::string const & installationLine)
{
    makeFile(std::string("library") + probedFile);
    makeFile(std::string("exec/bin/") + script);
    ScopedEnvironment const library(variable, "library");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    ReportCapture const report;

    EXPECT_EQ(Paths::m_InstallationStatus, Paths::InstallationStatus::Unknown);
    Paths paths;
    paths.m_System = 1;
    EXPECT_TRUE(paths.isInstalled());
    EXPECT_EQ(Paths::m_InstallationStatus, Paths::InstallationStatus::Installed);
    std::string const first =
        systemLines + scriptLines(script) + installationLine + "library" + probedFile + "\n";
    EXPECT_EQ(report.text(), first);

    std::filesystem::remove_all("library");
    EXPECT_TRUE(Paths(paths).isInstalled());
    EXPECT_EQ(report.text(), first + systemLines);
}

/// A translator whose library is not there: not found, and not looked for again.
template <class Paths>
void expectNotInstalled(char const * variable, char const * probedFile, char const * script,
                        std::string const & failureLine)
{
    std::filesystem::create_directories("library");
    makeFile(std::string("exec/bin/") + script);
    ScopedEnvironment const library(variable, "library");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    ReportCapture const report;

    Paths paths;
    paths.m_System = 1;
    EXPECT_FALSE(paths.isInstalled());
    EXPECT_EQ(Paths::m_InstallationStatus, Paths::InstallationStatus::NotInstalled);
    std::string const expected = systemLines + failureLine + "library" + probedFile + "\n";
    EXPECT_EQ(report.text(), expected);

    makeFile(std::string("library") + probedFile);
    EXPECT_FALSE(Paths(paths).isInstalled());
    EXPECT_EQ(report.text(), expected);
}

/// A translator whose variable is not set.
template <class Paths> void expectNotInstalledWithoutVariable(std::string const & lines)
{
    ReportCapture const report;
    Paths paths;
    paths.m_System = 1;
    EXPECT_FALSE(paths.isInstalled());
    EXPECT_EQ(Paths::m_InstallationStatus, Paths::InstallationStatus::NotInstalled);
    EXPECT_EQ(report.text(), systemLines + lines);
}

} // namespace

TEST_F(ProductPathsTest, NamesAreThoseOfTheProduct)
{
    expectNames<JTPaths>({"JT_OPEN_PATH", "jt_translator.exe", "keld_jt_win64.exe",
                          "keld_jt_win32.exe", "keld_jt.sh", "/keld_jt_linux_x86_64",
                          "/cad_translators/jt_translator"});
    expectNames<CTPaths>({"CT_LIB_PATH_DBG", "ct_translator.exe", "keld_ct_win64.exe",
                          "keld_ct_win32.exe", "keld_ct.sh", "/keld_ct_linux_x86_64",
                          "/cad_translators/ct_translator"});
    expectNames<RhinoPaths>({"RHINO_LIB_PATH", "rhino_translator.exe", "keld_rhino_win64.exe",
                             "keld_rhino_win32.exe", "keld_rhino.sh", "/keld_rhino_linux_x86_64",
                             "/cad_translators/rhino_translator"});
    expectNames<U3dPdfPaths>({"U3DPDF_LIB_PATH", "u3dpdf_translator.exe", "keld_u3dpdf_win64.exe",
                              "keld_u3dpdf_win32.exe", "keld_u3dpdf.sh",
                              "/keld_u3dpdf_linux_x86_64", "/cad_translators/u3dpdf_translator"});
}

TEST_F(ProductPathsTest, JTIsInstalledWithItsLibrary)
{
    expectInstalled<JTPaths>("JT_OPEN_PATH", "/JtTk107.dll", "keld_jt.sh",
                             "|JT_LOG: JT Installation path: ");
}

TEST_F(ProductPathsTest, RhinoIsInstalledWithItsLibrary)
{
    expectInstalled<RhinoPaths>("RHINO_LIB_PATH", "/opennurbs_public.dll", "keld_rhino.sh",
                                "|RHINO_LOG: Rhino Installation path: ");
}

TEST_F(ProductPathsTest, U3dPdfIsInstalledWithItsLibrary)
{
    expectInstalled<U3dPdfPaths>("U3DPDF_LIB_PATH", "/IFXCore.dll", "keld_u3dpdf.sh",
                                 "|U3DPDF_LOG: U3dPdf Installation path: ");
}

TEST_F(ProductPathsTest, JTIsNotInstalledWithoutItsLibrary)
{
    expectNotInstalled<JTPaths>("JT_OPEN_PATH", "/JtTk107.dll", "keld_jt.sh",
                                "|JT_LOG: Exec file check failed or cannot access path: ");
}

TEST_F(ProductPathsTest, RhinoIsNotInstalledWithoutItsLibrary)
{
    expectNotInstalled<RhinoPaths>("RHINO_LIB_PATH", "/opennurbs_public.dll", "keld_rhino.sh",
                                   "|RHINO_LOG: Exec file check failed or cannot access path: ");
}

TEST_F(ProductPathsTest, U3dPdfIsNotInstalledWithoutItsLibrary)
{
    expectNotInstalled<U3dPdfPaths>("U3DPDF_LIB_PATH", "/IFXCore.dll", "keld_u3dpdf.sh",
                                    "|U3DPDF_LOG: Exec file check failed or cannot access path: ");
}

TEST_F(ProductPathsTest, WithoutVariableNoneIsInstalled)
{
    expectNotInstalledWithoutVariable<JTPaths>("");
    expectNotInstalledWithoutVariable<RhinoPaths>("");
    expectNotInstalledWithoutVariable<U3dPdfPaths>("");
    expectNotInstalledWithoutVariable<CTPaths>(
        "|CT_LOG: CT installation read from CT_LIB_PATH cannot be found\n");
}

TEST_F(ProductPathsTest, WithoutExecutableItIsNotInstalled)
{
    makeFile("library/JtTk107.dll");
    ScopedEnvironment const library("JT_OPEN_PATH", "library");
    ReportCapture const report;
    JTPaths paths;
    paths.m_System = 1;
    EXPECT_FALSE(paths.isInstalled());
    EXPECT_EQ(report.text(), systemLines + "|EXEC_LOG: Exec command:  | (0)\n"
                                           "|JT_LOG: Exec file check failed or cannot access path: "
                                           "library/JtTk107.dll\n");
}

TEST_F(ProductPathsTest, VerdictsOfTheClassesAreApart)
{
    makeFile("library/JtTk107.dll");
    makeFile("exec/bin/keld_jt.sh");
    ScopedEnvironment const library("JT_OPEN_PATH", "library");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    JTPaths paths;
    paths.m_System = 1;
    EXPECT_TRUE(paths.isInstalled());
    EXPECT_EQ(CTPaths::m_InstallationStatus, CTPaths::Unknown);
    EXPECT_EQ(RhinoPaths::m_InstallationStatus, RhinoPaths::Unknown);
    EXPECT_EQ(U3dPdfPaths::m_InstallationStatus, U3dPdfPaths::Unknown);
}

TEST_F(ProductPathsTest, SystemLineHasTheSystemsNumber)
{
    ReportCapture const report;
    JTPaths paths;
    paths.m_System = 12345;
    EXPECT_FALSE(paths.isInstalled());
    EXPECT_EQ(report.text(), "|System           : 12345\n\n");
}

TEST_F(ProductPathsTest, JTCommandOnWindows)
{
    ScopedEnvironment const exec("VORN_EXEC_DIR", "C:/x");
    JTPaths paths;
    EXPECT_EQ(paths.calcExecCmd(), "C:\\x\\cad_translators\\Release\\jt_translator.exe");
    makeFile("C:/x/win64/cadexe/keld_jt_win64.exe");
    EXPECT_EQ(paths.calcExecCmd(), "C:\\x\\\\win64\\cadexe\\keld_jt_win64.exe");
}

TEST_F(ProductPathsTest, JTCommandOnLinuxIsTheScript)
{
    makeFile("exec/bin/keld_jt.sh");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    JTPaths paths;
    paths.m_System = 2;
    EXPECT_EQ(paths.calcExecCmd(), "exec/bin/keld_jt.sh");
    EXPECT_FALSE(paths.checkExecFile());
    makeFile("exec/bin/cad_translators/jt_translator");
    EXPECT_TRUE(paths.checkExecFile());
    std::filesystem::remove("exec/bin/cad_translators/jt_translator");
    makeFile("exec/bin/keld_jt_linux_x86_64");
    EXPECT_TRUE(paths.checkExecFile());
}

TEST_F(ProductPathsTest, JTLibraryPath)
{
    ScopedEnvironment const library("JT_OPEN_PATH", "C:/jt");
    ScopedEnvironment const path("PATH", "P");
    EXPECT_EQ(JTPaths().calcLibPath(), "C:/jt/;P;");
}

TEST_F(ProductPathsTest, CTCommandIsEmptyWithoutVariables)
{
    ReportCapture const report;
    EXPECT_EQ(CTPaths().calcExecCmd(), "");
    EXPECT_EQ(report.text(), "|EXEC_LOG: keld_shared location: \n");
}

TEST_F(ProductPathsTest, CTCommandTriesTheSharedFolderOnEverySystem)
{
    makeFile("shared/bin/keld_ct.sh");
    ScopedEnvironment const shared("KELD_SHARED_DIR", "shared");
    ReportCapture const report;
    CTPaths paths;
    paths.m_System = 1;
    EXPECT_EQ(paths.calcExecCmd(), "shared/bin/keld_ct.sh");
    EXPECT_EQ(report.text(),
              "|EXEC_LOG: keld_shared location: shared\n"
              "|EXEC_LOG: Keld Shared location: shared\n"
              "|INSTALL_LOG: Installation Path: /bin/\n"
              "|CT_EXEC_LOG: Exec command for CT Translator: shared/bin/keld_ct.sh\n");
}

TEST_F(ProductPathsTest, CTCommandOnWindowsHasBackslashesInItsLineToo)
{
    makeFile("shared/win32/cadexe/keld_ct_win32.exe");
    ScopedEnvironment const shared("KELD_SHARED_DIR", "shared");
    ReportCapture const report;
    CTPaths paths;
    paths.m_Is64Bit = false;
    EXPECT_EQ(paths.calcExecCmd(), "shared\\\\win32\\cadexe\\keld_ct_win32.exe");
    EXPECT_EQ(report.text(), "|EXEC_LOG: keld_shared location: shared\n"
                             "|EXEC_LOG: Keld Shared location: shared\n"
                             "|INSTALL_LOG: Installation Path: //win32/cadexe/\n"
                             "|CT_EXEC_LOG: Exec command for CT Translator: "
                             "shared\\\\win32\\cadexe\\keld_ct_win32.exe\n");
}

TEST_F(ProductPathsTest, CTCommandThatTheSharedFolderLacksIsGivenUnchangedWithoutAnotherVariable)
{
    std::filesystem::create_directory("shared");
    ScopedEnvironment const shared("KELD_SHARED_DIR", "shared");
    ReportCapture const report;
    EXPECT_EQ(CTPaths().calcExecCmd(), "shared//win64/cadexe/keld_ct_win64.exe");
    EXPECT_EQ(report.text(), "|EXEC_LOG: keld_shared location: shared\n"
                             "|EXEC_LOG: Keld Shared location: shared\n"
                             "|INSTALL_LOG: Installation Path: //win64/cadexe/\n");
}

TEST_F(ProductPathsTest, CTCommandDoesNotTryTheInstallation)
{
    makeFile("exec/bin/keld_ct.sh");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    ReportCapture const report;
    CTPaths paths;
    paths.m_System = 2;
    EXPECT_EQ(paths.calcExecCmd(), "exec/keld_ct.sh");
    EXPECT_EQ(report.text(),
              "|EXEC_LOG: keld_shared location: exec\n"
              "|EXEC_LOG: Cannot access keld_shared location: exec/../shared_v23.0.0\n"
              "|CT_EXEC_LOG: Exec command for CT Translator: exec/keld_ct.sh\n");
    paths.m_System = 0;
    paths.m_Debug = true;
    EXPECT_EQ(paths.calcExecCmd(), "exec\\cad_translators\\Debug\\ct_translator.exe");
}

TEST_F(ProductPathsTest, CTLibraryPathHasTheSearchPathInFront)
{
    ScopedEnvironment const library("CT_LIB_PATH_DBG", "C:/ct");
    ScopedEnvironment const path("PATH", "P");
    ReportCapture const report;
    CTPaths paths;
    EXPECT_EQ(paths.calcLibPath(), "P;C:/ct/win-64-msvc2019-kode/");
    paths.m_Is64Bit = false;
    EXPECT_EQ(paths.calcLibPath(), "P;C:/ct/win-32-msvc2010-kode/");
    EXPECT_EQ(report.text(),
              "|CT_LIB_LOG: Windows CT library path: P;C:/ct/win-64-msvc2019-kode/\n"
              "|CT_LIB_LOG: Windows CT library path: P;C:/ct/win-32-msvc2010-kode/\n");
}

TEST_F(ProductPathsTest, CTLibraryPathStandsAloneWithoutASearchPath)
{
    ScopedEnvironment const library("CT_LIB_PATH_DBG", "C:/ct");
    ScopedEnvironment const path("PATH", std::nullopt);
    EXPECT_EQ(CTPaths().calcLibPath(), "C:/ct/win-64-msvc2019-kode/");
}

TEST_F(ProductPathsTest, CTLibraryPathDoesNotLookAtTheProbedVariable)
{
    ScopedEnvironment const library("CT_LIB_PATH", "C:/ct");
    ReportCapture const report;
    EXPECT_EQ(CTPaths().calcLibPath(), "");
    EXPECT_EQ(report.text(),
              "|CT_LIB_LOG: Windows Translator Path read from [ CT_LIB_PATH_DBG] not found\n"
              "|CT_LIB_LOG: Windows CT library path: \n");
}

namespace {

/// Lines of CT's `checkExecFile` with system 1 and "exec/keld_ct.sh".
std::string ctLines(char const * verdict)
{
    return std::string("|EXEC_LOG: keld_shared location: exec\n"
                       "|EXEC_LOG: Cannot access keld_shared location: exec/../shared_v23.0.0\n"
                       "|CT_EXEC_LOG: Exec command for CT Translator: exec/keld_ct.sh\n"
                       "|EXEC_LOG: Exec command: exec/keld_ct.sh | (") +
           verdict + ")\n";
}

} // namespace

TEST_F(ProductPathsTest, CTIsInstalledWithItsLibrary)
{
    makeFile("library/ct_reader.dll");
    makeFile("exec/keld_ct.sh");
    ScopedEnvironment const library("CT_LIB_PATH", "library");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    ReportCapture const report;
    CTPaths paths;
    paths.m_System = 1;
    EXPECT_TRUE(paths.isInstalled());
    EXPECT_EQ(CTPaths::m_InstallationStatus, CTPaths::Installed);
    std::string const first =
        systemLines + ctLines("1") + "|CT_LOG: CT installation path: library/ct_reader.dll\n";
    EXPECT_EQ(report.text(), first);
    EXPECT_TRUE(paths.isInstalled());
    EXPECT_EQ(report.text(), first + systemLines);
}

TEST_F(ProductPathsTest, CTIsInstalledWithTheLibraryOfItsSecondVariable)
{
    makeFile("debug/ct_reader.dll");
    makeFile("exec/keld_ct.sh");
    ScopedEnvironment const library("CT_LIB_PATH", "library");
    ScopedEnvironment const debug("CT_LIB_PATH_DBG", "debug");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    ReportCapture const report;
    CTPaths paths;
    paths.m_System = 1;
    EXPECT_TRUE(paths.isInstalled());
    EXPECT_EQ(CTPaths::m_InstallationStatus, CTPaths::Installed);
    EXPECT_EQ(report.text(), systemLines +
                                 "|CT_LOG: Exec file check failed or cannot access path: "
                                 "library/ct_reader.dll\n" +
                                 ctLines("1"));
}

TEST_F(ProductPathsTest, CTIsNotInstalledWithTheSecondVariableAlone)
{
    makeFile("debug/ct_reader.dll");
    makeFile("exec/keld_ct.sh");
    ScopedEnvironment const debug("CT_LIB_PATH_DBG", "debug");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    expectNotInstalledWithoutVariable<CTPaths>(
        "|CT_LOG: CT installation read from CT_LIB_PATH cannot be found\n");
}

TEST_F(ProductPathsTest, CTIsNotInstalledWithoutItsLibrary)
{
    expectNotInstalled<CTPaths>("CT_LIB_PATH", "/ct_reader.dll", "keld_ct.sh",
                                "|CT_LOG: Exec file check failed or cannot access path: ");
}

TEST_F(ProductPathsTest, CTWithoutExecutableIsLookedForTwiceAndNotInstalled)
{
    makeFile("library/ct_reader.dll");
    ScopedEnvironment const library("CT_LIB_PATH", "library");
    ScopedEnvironment const debug("CT_LIB_PATH_DBG", "library");
    ScopedEnvironment const exec("VORN_EXEC_DIR", "exec");
    ReportCapture const report;
    CTPaths paths;
    paths.m_System = 1;
    EXPECT_FALSE(paths.isInstalled());
    EXPECT_EQ(CTPaths::m_InstallationStatus, CTPaths::NotInstalled);
    EXPECT_EQ(report.text(), systemLines + ctLines("0") +
                                 "|CT_LOG: Exec file check failed or cannot access path: "
                                 "library/ct_reader.dll\n" +
                                 ctLines("0"));
    EXPECT_FALSE(paths.isInstalled());
}

TEST(ProductPaths, VerdictsHaveTheirNumbers)
{
    EXPECT_EQ(JTPaths::InstallationStatus::Unknown, 0);
    EXPECT_EQ(JTPaths::InstallationStatus::Installed, 1);
    EXPECT_EQ(JTPaths::InstallationStatus::NotInstalled, 2);
    static_assert(!std::is_same_v<JTPaths::InstallationStatus, CTPaths::InstallationStatus>);
    static_assert(sizeof(JTPaths) == sizeof(ExecPaths) && sizeof(CTPaths) == sizeof(ExecPaths));
    static_assert(sizeof(RhinoPaths) == sizeof(ExecPaths));
    static_assert(sizeof(U3dPdfPaths) == sizeof(ExecPaths));
}
