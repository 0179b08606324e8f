#include "process/keld_program.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

TEST(KeldTranslators, ListsTheProductsAndItsOwn)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    Ended const ended = keld.run({"translators"});
    EXPECT_EQ(0, ended.code);
    for (char const * line :
         {"jt         not usable is not installed\n", "ct         not usable is not installed\n",
          "rhino      not usable is not installed\n", "u3dpdf     not usable is not installed\n",
          "stl        usable     /", "xyz        usable     /"})
        EXPECT_THAT(ended.out, HasSubstr(line));
    EXPECT_THAT(ended.out, HasSubstr("/bin/keld_stl.sh\n"));
    EXPECT_THAT(ended.out, HasSubstr("/bin/keld_xyz.sh\n"));
}

TEST(KeldTranslators, LooksIntoTheInstallationThatTheEnvironmentNames)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("stl", "");
    keld.installScripted("jt", "");
    keld.file("JtTk107.dll", "");
    keld.set("JT_OPEN_PATH", keld.files().path());

    Ended const ended = keld.run({"translators"});

    EXPECT_THAT(ended.out, HasSubstr("stl        usable     " + keld.bin() + "/keld_stl.sh\n"));
    EXPECT_THAT(ended.out, HasSubstr("jt         usable     " + keld.bin() + "/keld_jt.sh\n"));
    EXPECT_THAT(ended.out, Not(HasSubstr("xyz")));
}

TEST(KeldTranslators, TellsWhatKeepsOneFromBeingUsed)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("a", "");
    keld.installScripted("b", "");
    std::filesystem::permissions(keld.bin() + "/keld_a.sh", std::filesystem::perms(0644));
    std::filesystem::remove(keld.bin() + "/keld_b_linux_x86_64");

    Ended const ended = keld.run({"translators"});

    EXPECT_THAT(ended.out, HasSubstr("a          not usable cannot be started: " + keld.bin() +
                                     "/keld_a.sh is not executable\n"));
    EXPECT_THAT(ended.out, HasSubstr("b          not usable is not installed: there is no " +
                                     keld.bin() + "/keld_b_linux_x86_64\n"));
}

} // namespace
