#include "support/leftovers.h"
#include "translators.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using keld::chooseForExport;
using keld::chooseForImport;
using keld::TranslatorChoice;
using testing::ElementsAre;
using tests::ScopedEnvironment;

std::vector<std::string> linesOf(TranslatorChoice const & choice)
{
    std::vector<std::string> lines;
    for (keld::TriedPath const & tried : choice.tried)
        lines.push_back(tried.path + ": " + tried.finding);
    return lines;
}

TEST(Translators, HaveTheirServerTypes)
{
    EXPECT_EQ(2U, chooseForExport("jt", "").serverType);
    EXPECT_EQ(4U, chooseForExport("ct", "").serverType);
    EXPECT_EQ(8U, chooseForExport("rhino", "").serverType);
    EXPECT_EQ(16U, chooseForExport("u3dpdf", "").serverType);
    EXPECT_EQ(1U, chooseForExport("step", "").serverType);
    EXPECT_EQ(1U, chooseForExport("xyz", "").serverType);
}

TEST(Translators, TellOfAnInstallationThatNoVariableNames)
{
    ScopedEnvironment const exec("VORN_EXEC_DIR", std::nullopt);
    ScopedEnvironment const library("STEP_LIB_PATH", std::nullopt);
    TranslatorChoice const choice = chooseForImport("step", "");
    EXPECT_EQ("is not installed", choice.trouble);
    EXPECT_THAT(linesOf(choice), ElementsAre("VORN_EXEC_DIR: not set"));
}

TEST(Translators, AreNotKnownByANameThatNoFileCanHave)
{
    for (char const * file : {"part", "part.", "part.a b", "part.s/"}) {
        TranslatorChoice const choice = chooseForExport("", file);
        EXPECT_EQ("is not known: the file name has no suffix that names one", choice.trouble);
        EXPECT_EQ(nullptr, choice.paths);
    }
}

} // namespace
