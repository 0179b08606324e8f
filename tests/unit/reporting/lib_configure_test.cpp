#include "support/leftovers.h"

#include <keld-transl/reporting/lib_configure.h>

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using namespace transl_tk;
using tests::ScopedEnvironment;
using tests::TemporaryDirectory;

namespace {

int diagnosticsAnswer = 0;
int diagnosticsCalls = 0;

int answerDiagnostics()
{
    ++diagnosticsCalls;
    return diagnosticsAnswer;
}

int otherDiagnostics()
{
    return 99;
}

int startedNumber = 0;
std::string startedLabel;
int startedClock = 0;

void * startClock(int number, char const * label)
{
    startedNumber = number;
    startedLabel = label;
    return &startedClock;
}

void * stoppedClock = nullptr;

void stopClock(void * clock)
{
    stoppedClock = clock;
}

struct Found
{
    bool isFound = false;
    std::unique_ptr<char, decltype(&std::free)> path{nullptr, &std::free};
};

Found tempDirectory()
{
    static char unchanged[] = "unchanged";
    char * path = unchanged;
    Found found;
    found.isFound = getTempDirectoryPath(&path);
    found.path.reset(path);
    return found;
}

constexpr std::array variables{"TMP", "TMPDIR", "TEMP", "TEMPDIR", "HOME", "PWD"};

/// None of the variables that a temporary directory is taken from is set.
class TempDirectoryPath : public testing::Test
{
    std::array<ScopedEnvironment, 6> m_Unset{{{"TMP", std::nullopt},
                                              {"TMPDIR", std::nullopt},
                                              {"TEMP", std::nullopt},
                                              {"TEMPDIR", std::nullopt},
                                              {"HOME", std::nullopt},
                                              {"PWD", std::nullopt}}};
};

} // namespace

TEST(LibConfigure, TakesACallbackBehindEachKnownName)
{
    libConfigure(3, "stopQAClock", stopClock, "useDiagnostics", answerDiagnostics, "startQAClock",
                 startClock);

    diagnosticsAnswer = 5;
    EXPECT_EQ(dbg::useDiagnostics(), 5);
    EXPECT_EQ(dbg::startQAClock(42, "label"), &startedClock);
    EXPECT_EQ(startedNumber, 42);
    EXPECT_EQ(startedLabel, "label");
    dbg::stopQAClock(&startedClock);
    EXPECT_EQ(stoppedClock, &startedClock);
}

TEST(LibConfigure, OnlyTheFirstCallCounts)
{
    libConfigure(2, "stopQAClock", stopClock, "useDiagnostics", answerDiagnostics);
    libConfigure(2, "useDiagnostics", otherDiagnostics, "startQAClock", startClock);

    diagnosticsAnswer = 5;
    EXPECT_EQ(dbg::useDiagnostics(), 5);
    EXPECT_EQ(dbg::startQAClock(42, "label"), nullptr);
    dbg::stopQAClock(&startedClock);
    EXPECT_EQ(stoppedClock, &startedClock);
}

TEST(LibConfigure, AnUnknownNameHasNoCallbackBehindIt)
{
    libConfigure(2, "other", "useDiagnostics", answerDiagnostics);

    diagnosticsAnswer = 5;
    EXPECT_EQ(dbg::useDiagnostics(), 5);
}

TEST(LibConfigure, AnUnknownNameAloneSetsNothing)
{
    libConfigure(1, "other", answerDiagnostics);

    EXPECT_EQ(dbg::useDiagnostics(), 0);
    EXPECT_EQ(diagnosticsCalls, 0);
}

TEST(LibConfigure, NamesAreComparedExactly)
{
    libConfigure(4, "usediagnostics", "useDiagnostics ", "startQAClock2", "");

    EXPECT_EQ(dbg::useDiagnostics(), 0);
    EXPECT_EQ(dbg::startQAClock(1, "label"), nullptr);
}

TEST(LibConfigure, ACountOfZeroReadsNothingAndCountsAsTheCall)
{
    libConfigure(0, "useDiagnostics", answerDiagnostics);
    libConfigure(1, "useDiagnostics", answerDiagnostics);

    EXPECT_EQ(dbg::useDiagnostics(), 0);
}

TEST(LibConfigure, ANegativeCountReadsNothing)
{
    libConfigure(-1, "useDiagnostics", answerDiagnostics);

    EXPECT_EQ(dbg::useDiagnostics(), 0);
}

TEST(Diagnostics, AreAskedOnce)
{
    libConfigure(1, "useDiagnostics", answerDiagnostics);

    diagnosticsAnswer = 5;
    EXPECT_EQ(dbg::useDiagnostics(), 5);
    diagnosticsAnswer = 6;
    EXPECT_EQ(dbg::useDiagnostics(), 5);
    EXPECT_EQ(diagnosticsCalls, 1);
}

TEST(Diagnostics, AreAskedAgainAfterMinusOne)
{
    libConfigure(1, "useDiagnostics", answerDiagnostics);

    diagnosticsAnswer = -1;
    EXPECT_EQ(dbg::useDiagnostics(), -1);
    diagnosticsAnswer = 3;
    EXPECT_EQ(dbg::useDiagnostics(), 3);
    EXPECT_EQ(diagnosticsCalls, 2);
}

TEST(Diagnostics, StayZeroWhenTheCallbackComesTooLate)
{
    EXPECT_EQ(dbg::useDiagnostics(), 0);
    diagnosticsAnswer = 5;
    libConfigure(1, "useDiagnostics", answerDiagnostics);
    EXPECT_EQ(dbg::useDiagnostics(), 0);
    EXPECT_EQ(diagnosticsCalls, 0);
}

TEST(QAClock, WithoutCallbacksIsNullAndHarmless)
{
    EXPECT_EQ(dbg::startQAClock(1, "label"), nullptr);
    dbg::stopQAClock(nullptr);
    dbg::stopQAClock(&startedClock);
    EXPECT_EQ(stoppedClock, nullptr);
}

TEST_F(TempDirectoryPath, IsTakenFromTheFirstVariableThatIsSet)
{
    TemporaryDirectory const parent;
    std::vector<std::unique_ptr<ScopedEnvironment>> set;
    for (std::size_t i = variables.size(); i-- > 0;) {
        std::string const directory = parent / variables[i];
        ASSERT_EQ(mkdir(directory.c_str(), 0700), 0);
        set.push_back(std::make_unique<ScopedEnvironment>(variables[i], directory));
        auto const found = tempDirectory();
        EXPECT_TRUE(found.isFound);
        EXPECT_STREQ(found.path.get(), directory.c_str());
    }
}

TEST_F(TempDirectoryPath, PassesOverADirectoryWithoutRights)
{
    // The privileged user may enter everything: for that user the directory is missing instead.
    TemporaryDirectory const parent;
    std::string const closed = parent / "closed";
    if (geteuid() != 0) {
        ASSERT_EQ(mkdir(closed.c_str(), 0), 0);
    }
    ScopedEnvironment const first("TMP", closed);
    ScopedEnvironment const second("TEMP", parent.path().string());
    auto const found = tempDirectory();
    EXPECT_TRUE(found.isFound);
    EXPECT_EQ(found.path.get(), parent.path().string());
}

TEST_F(TempDirectoryPath, IsNullWhenNoVariableIsSet)
{
    auto const found = tempDirectory();
    EXPECT_FALSE(found.isFound);
    EXPECT_EQ(found.path, nullptr);
}

TEST_F(TempDirectoryPath, IsTheLastValueWhenThatCannotBeAccessed)
{
    ScopedEnvironment const last("PWD", "/nonexistent/last");
    auto const found = tempDirectory();
    EXPECT_FALSE(found.isFound);
    EXPECT_STREQ(found.path.get(), "/nonexistent/last");
}

TEST_F(TempDirectoryPath, IsNullWhenOnlyAnEarlierValueCannotBeAccessed)
{
    ScopedEnvironment const first("TMP", "/nonexistent/first");
    auto const found = tempDirectory();
    EXPECT_FALSE(found.isFound);
    EXPECT_EQ(found.path, nullptr);
}
