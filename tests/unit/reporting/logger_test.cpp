#include "support/captured_stream.h"
#include "support/slots.h"

#include <keld-transl/process/server.h>
#include <keld-transl/reporting/logger.h>

#include <gtest/gtest.h>
#include <iostream>
#include <tuple>
#include <vector>

using cad::ILoggerPolicy;
using cad::LoggerInactive;
using tests::CapturedStream;
using transl_tk::Component;
using transl_tk::Logger;
using transl_tk::Server;

namespace {

using SubType = ILoggerPolicy::SubType;
using Visited = std::vector<std::tuple<std::string, int, bool>>;

bool note(char const * text, SubType const & subType, bool const & show, void * context)
{
    static_cast<Visited *>(context)->emplace_back(text, subType, show);
    return true;
}

bool noteAndStop(char const * text, SubType const & subType, bool const & show, void * context)
{
    note(text, subType, show, context);
    return false;
}

/// A logger in a process that is remote, and so does not echo.
class LoggerTest : public testing::Test
{
protected:
    LoggerTest() { Server::create(true); }
    ~LoggerTest() override { Server::create(false); }

    std::string allOf(int type)
    {
        return m_Logger.GetEntriesOfType(type, SubType::Any, false, false);
    }

    Logger m_Logger;
};

} // namespace

TEST_F(LoggerTest, HasSixEmptyLists)
{
    for (int type = 1; type <= 6; ++type) {
        EXPECT_EQ(allOf(type), "");
        EXPECT_FALSE(m_Logger.hasEntryError(type));
    }
}

TEST_F(LoggerTest, KeepsEntriesOfEachListInOrder)
{
    for (int type = 1; type <= 6; ++type) {
        m_Logger.addEntry("first", type);
        m_Logger.addEntry("second", type);
        m_Logger.addEntry("first", type);
        EXPECT_EQ(allOf(type), "first\nsecond\nfirst\n");
    }
}

TEST_F(LoggerTest, DropsAnEmptyText)
{
    m_Logger.addEntry("", 1);
    m_Logger.addEntry(nullptr, 1);
    Visited visited;
    EXPECT_TRUE(m_Logger.for_each_entry(1, note, &visited));
    EXPECT_TRUE(visited.empty());
}

TEST_F(LoggerTest, DropsAnEntryOfAnyOtherList)
{
    for (int type : {-1, 0, 7, 1000}) {
        m_Logger.addEntry("text", type, SubType::ErrorLine, true);
        EXPECT_EQ(allOf(type), "");
        EXPECT_FALSE(m_Logger.hasEntryError(type));
        Visited visited;
        EXPECT_TRUE(m_Logger.for_each_entry(type, note, &visited));
        EXPECT_TRUE(visited.empty());
    }
}

TEST_F(LoggerTest, ShortFormOfAddEntryIsAShownText)
{
    m_Logger.addEntry("text", 5);
    Visited visited;
    m_Logger.for_each_entry(5, note, &visited);
    EXPECT_EQ(visited, (Visited{{"text", SubType::Text, true}}));
}

TEST_F(LoggerTest, TextFormHasThePrefixOfItsSubTypeAndALineFeed)
{
    m_Logger.addEntry("a", 1, SubType::Text, true);
    m_Logger.addEntry("b", 1, SubType::Indented, true);
    m_Logger.addEntry("c", 1, SubType::ErrorLine, true);
    m_Logger.addEntry("d", 1, SubType::WarningLine, true);
    m_Logger.addEntry("e", 1, SubType::Any, true);
    m_Logger.addEntry("f", 1, SubType(77), true);
    m_Logger.addEntry("g", 1, SubType(-1), true);
    EXPECT_EQ(allOf(1), "a\n        b\n    Error : c\n    Warning : d\ne\nf\ng\n");
}

TEST_F(LoggerTest, HtmlFormHasThePrefixOfItsSubTypeAndABreak)
{
    m_Logger.addEntry("a", 1, SubType::Text, true);
    m_Logger.addEntry("b", 1, SubType::Indented, true);
    m_Logger.addEntry("c", 1, SubType::ErrorLine, true);
    m_Logger.addEntry("d", 1, SubType::WarningLine, true);
    m_Logger.addEntry("e", 1, SubType::Any, true);
    EXPECT_EQ(m_Logger.GetEntriesOfType(1, SubType::Any, false, true),
              "a<br>"
              "&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;b<br>"
              "&nbsp;&nbsp;&nbsp;&nbsp;Error : c<br>"
              "&nbsp;&nbsp;&nbsp;&nbsp;Warning : d<br>"
              "e<br>");
}

TEST_F(LoggerTest, OneErrorInHtmlForm)
{
    m_Logger.addEntry("x", 1, SubType::ErrorLine, true);
    EXPECT_EQ(m_Logger.GetEntriesOfType(1, SubType::ErrorLine, false, true),
              "&nbsp;&nbsp;&nbsp;&nbsp;Error : x<br>");
}

TEST_F(LoggerTest, TextOfEntriesIsFilteredBySubTypeAndShow)
{
    m_Logger.addEntry("a", 2, SubType::Text, true);
    m_Logger.addEntry("b", 2, SubType::Text, false);
    m_Logger.addEntry("c", 2, SubType::ErrorLine, true);
    m_Logger.addEntry("d", 2, SubType::ErrorLine, false);
    EXPECT_EQ(m_Logger.GetEntriesOfType(2, SubType::Text, false, false), "a\nb\n");
    EXPECT_EQ(m_Logger.GetEntriesOfType(2, SubType::Text, true, false), "a\n");
    EXPECT_EQ(m_Logger.GetEntriesOfType(2, SubType::ErrorLine, true, false), "    Error : c\n");
    EXPECT_EQ(m_Logger.GetEntriesOfType(2, SubType::Any, true, false), "a\n    Error : c\n");
    EXPECT_EQ(m_Logger.GetEntriesOfType(2, SubType::Indented, false, false), "");
    EXPECT_EQ(m_Logger.GetEntriesOfType(3, SubType::Any, false, false), "");
}

TEST_F(LoggerTest, AnEntryOfSubTypeAnyMatchesOnlyTheFilterAny)
{
    m_Logger.addEntry("a", 1, SubType::Any, true);
    EXPECT_EQ(m_Logger.GetEntriesOfType(1, SubType::Text, false, false), "");
    EXPECT_EQ(m_Logger.GetEntriesOfType(1, SubType::Any, false, false), "a\n");
}

TEST_F(LoggerTest, WalkIsFilteredBySubTypeButNotByShow)
{
    m_Logger.addEntry("a", 1, SubType::Text, true);
    m_Logger.addEntry("b", 1, SubType::ErrorLine, false);
    m_Logger.addEntry("c", 1, SubType::ErrorLine, true);
    for (bool shownOnly : {false, true}) {
        Visited errors;
        EXPECT_TRUE(m_Logger.for_each_entry(1, note, &errors, SubType::ErrorLine, shownOnly));
        EXPECT_EQ(errors,
                  (Visited{{"b", SubType::ErrorLine, false}, {"c", SubType::ErrorLine, true}}));
        Visited all;
        EXPECT_TRUE(m_Logger.for_each_entry(1, note, &all, SubType::Any, shownOnly));
        EXPECT_EQ(all.size(), 3U);
    }
}

TEST_F(LoggerTest, ShortFormOfTheWalkVisitsAllEntries)
{
    m_Logger.addEntry("a", 1, SubType::Text, true);
    m_Logger.addEntry("b", 1, SubType::WarningLine, false);
    Visited visited;
    EXPECT_TRUE(m_Logger.for_each_entry(1, note, &visited));
    EXPECT_EQ(visited, (Visited{{"a", SubType::Text, true}, {"b", SubType::WarningLine, false}}));
}

TEST_F(LoggerTest, WalkStopsAtTheFirstFalse)
{
    m_Logger.addEntry("a", 1);
    m_Logger.addEntry("b", 1);
    Visited visited;
    EXPECT_FALSE(m_Logger.for_each_entry(1, noteAndStop, &visited));
    EXPECT_EQ(visited, (Visited{{"a", SubType::Text, true}}));
}

TEST_F(LoggerTest, WalkOverAnEmptyListIsTrue)
{
    Visited visited;
    EXPECT_TRUE(m_Logger.for_each_entry(1, noteAndStop, &visited));
    EXPECT_TRUE(visited.empty());
}

TEST_F(LoggerTest, WalkSurvivesACallbackThatLogs)
{
    m_Logger.addEntry("a", 1);
    struct Context
    {
        Logger & logger;
        int visits = 0;
    } context{m_Logger};
    auto const logSome = [](char const * text, SubType const &, bool const &, void * given) {
        auto & seen = *static_cast<Context *>(given);
        if (++seen.visits < 100)
            seen.logger.addEntry("more", 1);
        return *text != '\0';
    };
    EXPECT_TRUE(m_Logger.for_each_entry(1, logSome, &context));
    EXPECT_EQ(context.visits, 100);
}

TEST_F(LoggerTest, ErrorsAreSeenInEveryListAndOnlyThere)
{
    for (int type = 1; type <= 6; ++type) {
        m_Logger.addEntry("text", type, SubType::WarningLine, true);
        EXPECT_FALSE(m_Logger.hasEntryError(type));
        m_Logger.addEntry("text", type, SubType::ErrorLine, false);
        EXPECT_TRUE(m_Logger.hasEntryError(type));
    }
}

TEST_F(LoggerTest, ClearEmptiesAllLists)
{
    for (int type = 1; type <= 6; ++type)
        m_Logger.addEntry("text", type, SubType::ErrorLine, true);
    m_Logger.clear();
    for (int type = 1; type <= 6; ++type) {
        EXPECT_FALSE(m_Logger.hasEntryError(type));
        EXPECT_EQ(allOf(type), "");
    }
    m_Logger.addEntry("again", 1);
    EXPECT_EQ(allOf(1), "again\n");
}

TEST_F(LoggerTest, RemembersTheProcessingComponent)
{
    EXPECT_EQ(m_Logger.getProcessingComponent(), nullptr);
    int place = 0;
    auto const * const component = reinterpret_cast<Component const *>(&place);
    m_Logger.setProcessingComponent(component);
    m_Logger.clear();
    EXPECT_EQ(m_Logger.getProcessingComponent(), component);
    m_Logger.setProcessingComponent(nullptr);
    EXPECT_EQ(m_Logger.getProcessingComponent(), nullptr);
}

TEST_F(LoggerTest, HasASharedMarkThatIsFalseAtFirst)
{
    EXPECT_FALSE(m_Logger.shared());
    m_Logger.shared() = true;
    EXPECT_TRUE(m_Logger.shared());
}

TEST(LoggerEcho, WritesShownEntriesOfListsOneToFourToStandardOutput)
{
    CapturedStream const output(std::cout);
    CapturedStream const errors(std::cerr);
    Logger logger;
    for (int type = -1; type <= 8; ++type)
        logger.addEntry(("list " + std::to_string(type)).c_str(), type, SubType::ErrorLine, true);
    EXPECT_EQ(output.text(), "    Error : list 1\n    Error : list 2\n"
                             "    Error : list 3\n    Error : list 4\n");
    EXPECT_EQ(errors.text(), "");
    EXPECT_TRUE(logger.hasEntryError(5));
    EXPECT_TRUE(logger.hasEntryError(6));
}

TEST(LoggerEcho, LeavesOutEntriesThatAreNotShown)
{
    CapturedStream const output(std::cout);
    Logger logger;
    logger.addEntry("hidden", 1, SubType::Text, false);
    logger.addEntry("", 1);
    EXPECT_EQ(output.text(), "");
    EXPECT_EQ(logger.GetEntriesOfType(1, SubType::Any, false, false), "hidden\n");
}

TEST(LoggerEcho, IsQuietInARemoteProcess)
{
    CapturedStream const output(std::cout);
    Logger logger;
    Server::create(true);
    logger.addEntry("text", 1);
    Server::create(false);
    EXPECT_EQ(output.text(), "");
    EXPECT_EQ(logger.GetEntriesOfType(1, SubType::Any, false, false), "text\n");
}

TEST(InactiveLogger, SwallowsEverything)
{
    CapturedStream const output(std::cout);
    LoggerInactive logger;
    int place = 0;
    logger.setProcessingComponent(reinterpret_cast<Component const *>(&place));
    logger.addEntry("text", 1);
    logger.addEntry("text", 1, SubType::ErrorLine, true);
    EXPECT_EQ(logger.getProcessingComponent(), nullptr);
    EXPECT_FALSE(logger.hasEntryError(1));
    EXPECT_EQ(logger.GetEntriesOfType(1, SubType::Any, false, false), "");
    EXPECT_EQ(output.text(), "");
    logger.clear();
}

TEST(InactiveLogger, WalksOverNothing)
{
    LoggerInactive logger;
    logger.addEntry("text", 1);
    Visited visited;
    EXPECT_TRUE(logger.for_each_entry(1, noteAndStop, &visited));
    EXPECT_TRUE(logger.for_each_entry(1, noteAndStop, &visited, SubType::Any, false));
    EXPECT_TRUE(visited.empty());
}

TEST(LoggerPolicy, CopyKeepsTheSharedMark)
{
    LoggerInactive logger;
    logger.shared() = true;
    LoggerInactive copy(logger);
    EXPECT_TRUE(copy.shared());
}

TEST(LoggerPolicy, SubTypesHaveTheirNumbers)
{
    EXPECT_EQ(ILoggerPolicy::SubType::Text, 0);
    EXPECT_EQ(ILoggerPolicy::SubType::Indented, 1);
    EXPECT_EQ(ILoggerPolicy::SubType::ErrorLine, 2);
    EXPECT_EQ(ILoggerPolicy::SubType::WarningLine, 3);
    EXPECT_EQ(ILoggerPolicy::SubType::Any, 4);
    EXPECT_EQ(sizeof(ILoggerPolicy::SubType), 4U);
}

TEST(LoggerPolicy, OperationsStandInTableOrderBeforeTheDestructor)
{
    using tests::slotOf;
    using Policy = ILoggerPolicy;
    using LongAdd =
        void (Policy::*)(char const *, Policy::Type const &, SubType const &, bool const &);
    using ShortAdd = void (Policy::*)(char const *, Policy::Type const &);
    using LongWalk = bool (Policy::*)(Policy::Type const &, Policy::Callback, void *,
                                      SubType const &, bool const &);
    using ShortWalk = bool (Policy::*)(Policy::Type const &, Policy::Callback, void *);
    struct Derived : LoggerInactive
    {
        virtual void behind() {}
    };
    EXPECT_EQ(slotOf(&Policy::clear), 0U);
    EXPECT_EQ(slotOf(&Policy::setProcessingComponent), 1U);
    EXPECT_EQ(slotOf(&Policy::getProcessingComponent), 2U);
    EXPECT_EQ(slotOf<LongAdd>(&Policy::addEntry), 3U);
    EXPECT_EQ(slotOf<ShortAdd>(&Policy::addEntry), 4U);
    EXPECT_EQ(slotOf(&Policy::hasEntryError), 5U);
    EXPECT_EQ(slotOf(&Policy::GetEntriesOfType), 6U);
    EXPECT_EQ(slotOf<LongWalk>(&Policy::for_each_entry), 7U);
    EXPECT_EQ(slotOf<ShortWalk>(&Policy::for_each_entry), 8U);
    EXPECT_EQ(slotOf(&Derived::behind), 11U);
}
