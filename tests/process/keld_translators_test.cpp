#include "process/keld_program.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

class KeldTranslators : public testing::Test
{
protected:
    /// What `keld translators` prints.
    std::string list()
    {
        Ended const ended = m_Keld.run({"translators"});
        EXPECT_EQ(0, ended.code);
        EXPECT_EQ("", ended.err);
        return ended.out;
    }

    /// Makes the installation one that holds nothing yet.
    void useEmptyInstallation()
    {
        std::filesystem::create_directories(m_Keld.bin());
        m_Keld.set("VORN_EXEC_DIR", root());
    }

    std::string root() const { return m_Keld.files() / "installation"; }

    void forbidExecution(std::string const & fileName) const
    {
        std::filesystem::permissions(m_Keld.bin() + fileName, std::filesystem::perms(0644));
    }

    LeftoverGuard const m_Guard;
    KeldProgram m_Keld;
};

TEST_F(KeldTranslators, ListsThoseOfItsInstallationWithTheirCommands)
{
    std::string const text = list();
    for (char const * line :
         {"jt         not usable is not installed\n", "ct         not usable is not installed\n",
          "rhino      not usable is not installed\n", "u3dpdf     not usable is not installed\n",
          "stl        usable     /", "xyz        usable     /"})
        EXPECT_THAT(text, HasSubstr(line));
    EXPECT_THAT(text, HasSubstr("/bin/keld_stl.sh\n"));
    EXPECT_THAT(text, HasSubstr("/bin/keld_xyz.sh\n"));
}

TEST_F(KeldTranslators, TellsEveryPathAtWhichOneWasLookedFor)
{
    useEmptyInstallation();
    m_Keld.set("JT_OPEN_PATH", "/no library");
    EXPECT_EQ("jt         not usable is not installed\n"
              "    /no library/JtTk107.dll: not there\n"
              "    " +
                  root() +
                  "/bin/keld_jt.sh: not there\n"
                  "    " +
                  root() +
                  "/keld_jt.sh: not there\n"
                  "    " +
                  root() +
                  "/keld_jt_linux_x86_64: not there\n"
                  "    " +
                  root() +
                  "/cad_translators/jt_translator: not there\n"
                  "ct         not usable is not installed\n"
                  "    CT_LIB_PATH: not set\n"
                  "    " +
                  root() +
                  "/keld_ct.sh: not there\n"
                  "    " +
                  root() +
                  "/keld_ct_linux_x86_64: not there\n"
                  "    " +
                  root() +
                  "/cad_translators/ct_translator: not there\n"
                  "rhino      not usable is not installed\n"
                  "    RHINO_LIB_PATH: not set\n"
                  "    " +
                  root() +
                  "/bin/keld_rhino.sh: not there\n"
                  "    " +
                  root() +
                  "/keld_rhino.sh: not there\n"
                  "    " +
                  root() +
                  "/keld_rhino_linux_x86_64: not there\n"
                  "    " +
                  root() +
                  "/cad_translators/rhino_translator: not there\n"
                  "u3dpdf     not usable is not installed\n"
                  "    U3DPDF_LIB_PATH: not set\n"
                  "    " +
                  root() +
                  "/bin/keld_u3dpdf.sh: not there\n"
                  "    " +
                  root() +
                  "/keld_u3dpdf.sh: not there\n"
                  "    " +
                  root() +
                  "/keld_u3dpdf_linux_x86_64: not there\n"
                  "    " +
                  root() +
                  "/cad_translators/u3dpdf_translator: not there\n"
                  "step       not usable is not installed\n"
                  "    " +
                  root() +
                  "/bin/keld_step.sh: not there\n"
                  "    " +
                  root() +
                  "/keld_step.sh: not there\n"
                  "    " +
                  root() +
                  "/keld_step_linux_x86_64: not there\n"
                  "    " +
                  root() + "/cad_translators/step_translator: not there\n",
              list());
}

/// A translator whose library is a file in a folder that a variable names.
struct Library
{
    char const * name;
    char const * variable;
    char const * file;
};

constexpr Library Libraries[] = {{"jt", "JT_OPEN_PATH", "JtTk107.dll"},
                                 {"ct", "CT_LIB_PATH", "ct_reader.dll"},
                                 {"rhino", "RHINO_LIB_PATH", "opennurbs_public.dll"},
                                 {"u3dpdf", "U3DPDF_LIB_PATH", "IFXCore.dll"}};

TEST_F(KeldTranslators, OneOfTheProductsIsUsableWithItsLibrary)
{
    for (Library const & library : Libraries) {
        m_Keld.installScripted(library.name, "");
        m_Keld.file(library.file, "");
        m_Keld.set(library.variable, m_Keld.files().path());
    }
    m_Keld.set("KELD_SHARED_DIR", root()); // where the one of CT is looked for
    std::string const text = list();
    for (std::string const name : {"jt    ", "ct    ", "rhino ", "u3dpdf"})
        EXPECT_THAT(text, HasSubstr(name + "     usable     " + m_Keld.bin() + "/keld_" +
                                    name.substr(0, name.find(' ')) + ".sh\n"));
}

TEST_F(KeldTranslators, OneOfTheProductsTellsOfALibraryThatIsMissing)
{
    for (Library const & library : Libraries) {
        m_Keld.installScripted(library.name, "");
        m_Keld.set(library.variable, "/lost");
    }
    std::string const text = list();
    for (Library const & library : Libraries)
        EXPECT_THAT(text, HasSubstr(std::string("not usable is not installed\n    /lost/") +
                                    library.file + ": not there\n"));
    EXPECT_THAT(text, HasSubstr("    CT_LIB_PATH_DBG: not set\n"));
    EXPECT_THAT(text, HasSubstr("    " + m_Keld.bin() + "/keld_jt.sh: found\n    " + m_Keld.bin() +
                                "/keld_jt_linux_x86_64: found\nct "));
}

TEST_F(KeldTranslators, TheSharedFolderIsTriedForCT)
{
    useEmptyInstallation();
    m_Keld.set("KELD_SHARED_DIR", m_Keld.files().path());
    EXPECT_THAT(list(),
                HasSubstr("    CT_LIB_PATH: not set\n    " + m_Keld.files().path().string() +
                          "/bin/keld_ct.sh: not there\n    " + root() +
                          "/keld_ct.sh: not there\n"));
}

TEST_F(KeldTranslators, TheOneForStepIsUsableWithoutAVariable)
{
    m_Keld.installScripted("step", "");
    EXPECT_THAT(list(), HasSubstr("step       usable     " + m_Keld.bin() + "/keld_step.sh\n"));
}

TEST_F(KeldTranslators, TheOneForStepTellsOfAFolderForItsLibraryThatIsMissing)
{
    m_Keld.installScripted("step", "");
    m_Keld.set("STEP_LIB_PATH", "/lost");
    EXPECT_THAT(list(), HasSubstr("step       not usable is not installed\n"
                                  "    /lost: not there\n"
                                  "    " +
                                  m_Keld.bin() +
                                  "/keld_step.sh: found\n"
                                  "    " +
                                  m_Keld.bin() + "/keld_step_linux_x86_64: found\n"));
}

TEST_F(KeldTranslators, TheOneForStepMayLieInALocalBuild)
{
    m_Keld.installScripted("step", "");
    std::filesystem::rename(m_Keld.bin() + "/keld_step.sh", root() + "/keld_step.sh");
    std::filesystem::create_directory(root() + "/cad_translators");
    std::filesystem::rename(m_Keld.bin() + "/keld_step_linux_x86_64",
                            root() + "/cad_translators/step_translator");
    EXPECT_THAT(list(), HasSubstr("step       usable     " + root() + "/keld_step.sh\n"));
}

TEST_F(KeldTranslators, TheOneForStepTellsWhatIsNotExecutable)
{
    m_Keld.installScripted("step", "");
    forbidExecution("/keld_step.sh");
    EXPECT_THAT(list(), HasSubstr("step       not usable cannot be started\n    " + m_Keld.bin() +
                                  "/keld_step.sh: not executable\n    " + m_Keld.bin() +
                                  "/keld_step_linux_x86_64: found\n"));
}

TEST_F(KeldTranslators, TheOneForStepNeedsAnExecutableThatCanBeExecuted)
{
    m_Keld.install("step", m_Keld.file("program", ""));
    EXPECT_THAT(list(), HasSubstr("step       not usable cannot be started\n    " + m_Keld.bin() +
                                  "/keld_step.sh: found\n    " + m_Keld.bin() +
                                  "/keld_step_linux_x86_64: not executable\n"));
}

TEST_F(KeldTranslators, AnyOtherOneIsListedWhereItsScriptLies)
{
    m_Keld.installScripted("stl", "");
    std::string const text = list();
    EXPECT_THAT(text, HasSubstr("stl        usable     " + m_Keld.bin() + "/keld_stl.sh\n"));
    EXPECT_THAT(text, Not(HasSubstr("xyz")));
}

TEST_F(KeldTranslators, AnyOtherOneTellsWhatKeepsItFromBeingUsed)
{
    m_Keld.installScripted("a", "");
    m_Keld.installScripted("b", "");
    m_Keld.installScripted("c", "");
    forbidExecution("/keld_a.sh");
    std::filesystem::remove(m_Keld.bin() + "/keld_b_linux_x86_64");
    std::filesystem::remove(m_Keld.bin() + "/keld_c_linux_x86_64");
    std::filesystem::create_directory(m_Keld.bin() + "/keld_c_linux_x86_64");

    std::string const text = list();

    EXPECT_THAT(text, HasSubstr("a          not usable cannot be started: " + m_Keld.bin() +
                                "/keld_a.sh is not executable\n    " + m_Keld.bin() +
                                "/keld_a.sh: not executable\n    " + m_Keld.bin() +
                                "/keld_a_linux_x86_64: found\n"));
    EXPECT_THAT(text,
                HasSubstr("b          not usable is not installed: there is no " + m_Keld.bin() +
                          "/keld_b_linux_x86_64\n    " + m_Keld.bin() + "/keld_b.sh: found\n    " +
                          m_Keld.bin() + "/keld_b_linux_x86_64: not there\n"));
    EXPECT_THAT(text, HasSubstr("c          not usable cannot be started: " + m_Keld.bin() +
                                "/keld_c_linux_x86_64 is no regular file\n"));
    EXPECT_THAT(text, HasSubstr(m_Keld.bin() + "/keld_c_linux_x86_64: no regular file\n"));
}

} // namespace
