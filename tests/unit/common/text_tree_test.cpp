#include <keld-common/text_tree.h>

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using Texts = std::vector<std::pair<std::string, std::string>>;

int s_ComparesLeft = -1; // the compare function throws when they are used up; negative: never
bool s_NoMemory = false;
int s_Copies = 0;
std::map<std::string, int> s_Released;

int compare(char const * a, char const * b)
{
    if (s_ComparesLeft-- == 0)
        throw std::runtime_error("no compare left");
    return std::strcmp(a, b);
}

char * duplicate(char const * text)
{
    ++s_Copies;
    return s_NoMemory ? nullptr : ::strdup(text);
}

void release(void * text)
{
    ++s_Released[static_cast<char *>(text)];
    std::free(text);
}

int note(char const * key, char const * text, void * texts)
{
    static_cast<Texts *>(texts)->emplace_back(key, text);
    return 1;
}

class TextTree : public testing::Test
{
protected:
    TextTree()
    {
        s_ComparesLeft = -1;
        s_NoMemory = false;
        s_Copies = 0;
        s_Released.clear();
    }

    int set(char const * key, char const * text)
    {
        char * const copy = ::strdup(text);
        int const done = SetNodeDataS_P(m_Tree.get(), key, copy, 0);
        if (done == 0)
            std::free(copy);
        return done;
    }

    Texts walk() const
    {
        Texts texts;
        EXPECT_EQ(WalkTreeS_P(m_Tree.get(), note, &texts), 1);
        return texts;
    }

    std::string get(char const * key) const
    {
        char const * const text = GetNodeDataS_P(m_Tree.get(), key);
        return text == nullptr ? "(null)" : text;
    }

    using Tree = std::unique_ptr<TreeS_P, decltype(&FreeTreeS_P)>;
    Tree m_Tree{NewTreeS_P(compare, duplicate, release), FreeTreeS_P};
};

} // namespace

TEST_F(TextTree, IsEmptyAtFirst)
{
    EXPECT_EQ(walk(), Texts());
    EXPECT_EQ(get("a"), "(null)");
}

TEST_F(TextTree, KeepsATextUnderItsKey)
{
    EXPECT_EQ(set("CAD/Mass", "1.5"), 1);
    EXPECT_EQ(set("CAD/Comment", "heavy"), 1);
    EXPECT_EQ(get("CAD/Mass"), "1.5");
    EXPECT_EQ(get("CAD/Comment"), "heavy");
}

TEST_F(TextTree, AdoptsTheTextItself)
{
    char * const text = ::strdup("1.5");
    SetNodeDataS_P(m_Tree.get(), "CAD/Mass", text, 0);
    EXPECT_EQ(GetNodeDataS_P(m_Tree.get(), "CAD/Mass"), text);
}

TEST_F(TextTree, TheLevelAboveAKeyHasNoTextOfItsOwn)
{
    set("CAD/Mass", "1.5");
    EXPECT_EQ(get("CAD"), "(null)");
    set("CAD", "top");
    EXPECT_EQ(walk(), (Texts{{"CAD", "top"}, {"CAD/Mass", "1.5"}}));
}

TEST_F(TextTree, SettingAKeyAgainReplacesAndReleasesItsText)
{
    set("a/b", "first");
    EXPECT_EQ(s_Released.count("first"), 0U);
    EXPECT_EQ(set("a/b", "second"), 1);
    EXPECT_EQ(s_Released, (std::map<std::string, int>{{"first", 1}}));
    EXPECT_EQ(walk(), (Texts{{"a/b", "second"}}));
    EXPECT_EQ(s_Copies, 1) << "the key is there already";
}

TEST_F(TextTree, SettingTheTextThatIsThereChangesNothing)
{
    char * const text = ::strdup("text");
    SetNodeDataS_P(m_Tree.get(), "a", text, 0);
    EXPECT_EQ(SetNodeDataS_P(m_Tree.get(), "a", text, 0), 1);
    EXPECT_TRUE(s_Released.empty());
    EXPECT_EQ(get("a"), "text");
}

TEST_F(TextTree, FreeingReleasesEveryTextAndEveryCopyOfAKeyOnce)
{
    set("x/y", "1");
    set("z", "2");
    m_Tree.reset();
    EXPECT_EQ(s_Released, (std::map<std::string, int>{{"1", 1}, {"2", 1}, {"x", 1}, {"z", 1}}))
        << "the copy of a key is split at its first level";
    FreeTreeS_P(nullptr);
}

TEST_F(TextTree, ComparesEveryLevelWithItsFunction)
{
    m_Tree.reset(NewTreeS_P(str_case_cmp, duplicate, release));
    set("CAD/Mass", "1");
    set("cad/MASS", "2");
    set("cad/Massive", "3");
    EXPECT_EQ(walk(), (Texts{{"CAD/Mass", "2"}, {"cad/Massive", "3"}}))
        << "the spelling of the first call stays";
}

TEST_F(TextTree, IsWalkedInTheOrderOfTheTree)
{
    for (char const * key : {"b", "a/c", "a-", "a", "a/b/c", "a/b"})
        set(key, "");
    // As whole texts, "a-" would stand before "a/b".
    EXPECT_EQ(walk(),
              (Texts{{"a", ""}, {"a/b", ""}, {"a/b/c", ""}, {"a/c", ""}, {"a-", ""}, {"b", ""}}));
}

TEST_F(TextTree, TheOrderIsThatOfTheGivenFunction)
{
    m_Tree.reset(NewTreeS_P([](char const * a, char const * b) { return std::strcmp(b, a); },
                            duplicate, release));
    for (char const * key : {"a", "a/a", "a/b", "b"})
        set(key, "");
    EXPECT_EQ(walk(), (Texts{{"b", ""}, {"a", ""}, {"a/b", ""}, {"a/a", ""}}));
}

TEST_F(TextTree, AnEmptyLevelIsALevel)
{
    Texts const all = {{"", "1"},  {"/", "2"},  {"//a", "3"},  {"/a", "4"},
                       {"a", "5"}, {"a/", "6"}, {"a//b", "7"}, {"a/b", "8"}};
    for (auto const & [key, text] : all)
        EXPECT_EQ(set(key.c_str(), text.c_str()), 1);
    EXPECT_EQ(walk(), all);
    for (auto const & [key, text] : all)
        EXPECT_EQ(get(key.c_str()), text);
}

TEST_F(TextTree, TakesAMillionLevels)
{
    std::string key;
    for (int i = 0; i < 1'000'000; ++i)
        key += "x/";
    EXPECT_EQ(set(key.c_str(), "deep"), 1);
    EXPECT_EQ(set((key + "y").c_str(), "deeper"), 1);
    EXPECT_EQ(get(key.c_str()), "deep");
    EXPECT_EQ(walk(), (Texts{{key, "deep"}, {key + "y", "deeper"}}));
}

TEST_F(TextTree, TheWalkEndsWhereItsFunctionSaysSo)
{
    set("a", "1");
    set("b", "2");
    set("c", "3");
    int visited = 0;
    auto const atMostTwo = [](char const *, char const *, void * user) {
        return ++*static_cast<int *>(user) < 2 ? 1 : 0;
    };
    EXPECT_EQ(WalkTreeS_P(m_Tree.get(), atMostTwo, &visited), 0);
    EXPECT_EQ(visited, 2);
}

TEST_F(TextTree, IsNotMadeOfNull)
{
    EXPECT_EQ(NewTreeS_P(nullptr, duplicate, release), nullptr);
    EXPECT_EQ(NewTreeS_P(compare, nullptr, release), nullptr);
    EXPECT_EQ(NewTreeS_P(compare, duplicate, nullptr), nullptr);
}

TEST_F(TextTree, NullIsRefused)
{
    set("a", "1");
    char text[] = "2";
    EXPECT_EQ(SetNodeDataS_P(nullptr, "a", text, 0), 0);
    EXPECT_EQ(SetNodeDataS_P(m_Tree.get(), nullptr, text, 0), 0);
    EXPECT_EQ(SetNodeDataS_P(m_Tree.get(), "a", nullptr, 0), 0);
    EXPECT_EQ(GetNodeDataS_P(nullptr, "a"), nullptr);
    EXPECT_EQ(GetNodeDataS_P(m_Tree.get(), nullptr), nullptr);
    EXPECT_EQ(WalkTreeS_P(nullptr, note, nullptr), 0);
    EXPECT_EQ(WalkTreeS_P(m_Tree.get(), nullptr, nullptr), 0);
    EXPECT_EQ(walk(), (Texts{{"a", "1"}}));
}

TEST_F(TextTree, WithoutMemoryForAKeyTheTextStaysTheCallers)
{
    set("a", "1");
    s_NoMemory = true;
    EXPECT_EQ(set("b", "2"), 0);
    EXPECT_TRUE(s_Released.empty());
    EXPECT_EQ(set("a", "3"), 1) << "a key that is there needs no copy";
    EXPECT_EQ(walk(), (Texts{{"a", "3"}}));
}

TEST_F(TextTree, AFailureAtAnyPointOfASetLeavesTheTreeAsItWas)
{
    set("a", "1");
    set("b", "2");
    int failures = 0;
    for (int compares = 0;; ++compares) {
        s_ComparesLeft = compares;
        int const done = set("c", "3");
        s_ComparesLeft = -1;
        if (done == 1)
            break;
        ++failures;
        EXPECT_EQ(walk(), (Texts{{"a", "1"}, {"b", "2"}}));
    }
    EXPECT_GT(failures, 2);
    EXPECT_EQ(s_Released["3"], 0);
    EXPECT_EQ(s_Released["c"], s_Copies - 3) << "copies of the key that were not kept";
    EXPECT_EQ(walk(), (Texts{{"a", "1"}, {"b", "2"}, {"c", "3"}}));
}

TEST_F(TextTree, NoExceptionLeavesALookUpOrAWalk)
{
    set("a", "1");
    s_ComparesLeft = 0;
    EXPECT_EQ(GetNodeDataS_P(m_Tree.get(), "a"), nullptr);
    auto const throws = [](char const *, char const *, void *) -> int {
        throw std::runtime_error("visit");
    };
    EXPECT_EQ(WalkTreeS_P(m_Tree.get(), throws, nullptr), 0);
}

TEST(StrCaseCmp, TakesLettersOfBothCasesForOne)
{
    EXPECT_EQ(str_case_cmp("", ""), 0);
    EXPECT_EQ(str_case_cmp("azAZ09", "AZaz09"), 0);
    EXPECT_LT(str_case_cmp("a", "B"), 0);
    EXPECT_LT(str_case_cmp("A", "b"), 0);
    EXPECT_GT(str_case_cmp("b", "A"), 0);
    EXPECT_LT(str_case_cmp("a", "ab"), 0);
    EXPECT_GT(str_case_cmp("AB", "a"), 0);
    EXPECT_GT(str_case_cmp("a", ""), 0);
}

TEST(StrCaseCmp, LeavesEveryOtherByteAsItIs)
{
    // The neighbours of both rows of letters, 32 apart.
    EXPECT_LT(str_case_cmp("@", "`"), 0);
    EXPECT_LT(str_case_cmp("[", "{"), 0);
    EXPECT_LT(str_case_cmp("_", "A"), 0) << "letters compare as small ones";
    EXPECT_GT(str_case_cmp("\xE9", "z"), 0) << "bytes have no sign";
    EXPECT_NE(str_case_cmp("\xC9", "\xE9"), 0);
}

TEST(StrCaseCmp, NullStandsBeforeEveryText)
{
    EXPECT_EQ(str_case_cmp(nullptr, nullptr), 0);
    EXPECT_LT(str_case_cmp(nullptr, ""), 0);
    EXPECT_GT(str_case_cmp("", nullptr), 0);
}
