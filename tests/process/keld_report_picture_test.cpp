#include "process/keld_program.h"
#include "process/other_programs.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::Answer;
using tests::answerOf;
using tests::contentOf;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::pythonSays;

/// The picture in the page about a model that the translator for tests makes for a name.
class Picture : public testing::Test
{
protected:
    Picture()
    {
        m_Keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
        m_Keld.install("stl", KELD_TEST_STL_TRANSLATOR);
    }

    std::string path() const { return m_Keld.files() / "r/report.html"; }

    void import(std::string const & name)
    {
        Ended const ended = m_Keld.run({"import", "-q", "--report", "r", name});
        ASSERT_EQ(0, ended.code) << ended.err;
    }

    /// Keeps what a script says about the page, for `fact`.
    void ask(std::string const & script, std::vector<std::string> const & more = {})
    {
        std::vector<std::string> command = {"python3", "-B", KELD_TEST_SCRIPTS "/" + script,
                                            path()};
        command.insert(command.end(), more.begin(), more.end());
        Answer const answer = answerOf(command);
        ASSERT_EQ(0, answer.code) << answer.text;
        m_Facts = m_Keld.file("facts.json", answer.text);
    }

    /// What python3 prints of an expression of those facts, `d`.
    std::string fact(std::string const & expression) const
    {
        return pythonSays(m_Facts, expression);
    }

    LeftoverGuard const m_Guard;
    KeldProgram m_Keld;
    std::string m_Facts;
};

using KeldReportPicture = Picture;

TEST_F(KeldReportPicture, IsAStillImageOfThePlacedParts)
{
    import("placed-facets.kit");
    ask("page_view.py", {"image"});
    EXPECT_EQ("[] 1", fact("d['unclosed'], d['images'], sep=' '"));
    EXPECT_EQ("1280 800", fact("d['image']['width'], d['image']['height']"));
    EXPECT_EQ("True", fact("all(d['image'][c] > 20000 for c in ('red', 'green', 'blue'))"));
    EXPECT_EQ("True", fact("d['image']['shown'] < 1280 * 800 / 2"));
    EXPECT_THAT(fact("d['view']"), HasSubstr("3 triangles, 2 meshes at 3 places. Drag to turn it"));
}

TEST_F(KeldReportPicture, HoldsEachTriangleAtEachOfItsPlaces)
{
    import("placed-facets.kit");
    ask("page_view.py");
    EXPECT_EQ("3 3", fact("d['count'], len(d['triangles'])"));
    EXPECT_EQ("[[0.0, 0.0, 2.0], [1.0, 0.0, 2.0], [0.0, 0.0, 3.0]] {'00ff00'}",
              fact("[c[0] for c in d['triangles'][0]], {c[1] for c in d['triangles'][0]}"));
    EXPECT_EQ("[[0.5, 0.0, 0.0], [1.5, 0.0, 0.0], [0.5, 0.0, 1.0]] {'ff0000'}",
              fact("[c[0] for c in d['triangles'][1]], {c[1] for c in d['triangles'][1]}"));
    EXPECT_EQ("[[-0.5, 0.0, 0.0], [-1.5, 0.0, 0.0], [-0.5, 0.0, 1.0]] {'0000ff'}",
              fact("[c[0] for c in d['triangles'][2]], {c[1] for c in d['triangles'][2]}"));
    EXPECT_EQ("[[], [[0.0, -1.0, 0.0], [0.0, -1.0, 0.0], [0.0, -1.0, 0.0]]]", fact("d['normals']"));
}

TEST_F(KeldReportPicture, ComesWithOneScriptThatThePageKnowsByItsHashAndThatLoadsNothing)
{
    import("placed-facets.kit");
    ask("page_view.py");
    EXPECT_EQ("default-src 'none'; style-src 'unsafe-inline'; img-src data:; script-src " +
                  fact("d['hash']"),
              fact("d['policy']"));
    EXPECT_EQ("[]", fact("d['words']"));
    std::string const page = contentOf(path());
    for (char const * part : {"http:", "https:", "url(", "@import", "<link", "href=", "<iframe",
                              "<object", "onload", "<script src"})
        EXPECT_THAT(page, Not(HasSubstr(part)));
}

TEST_F(KeldReportPicture, IsTheImageAloneOfAModelThatIsTooLarge)
{
    import("crowded-facets.kit");
    ask("page_view.py", {"image"});
    EXPECT_EQ("False", fact("'count' in d"));
    EXPECT_EQ("True", fact("d['image']['shown'] > 0"));
    EXPECT_EQ("default-src 'none'; style-src 'unsafe-inline'; img-src data:", fact("d['policy']"));
    EXPECT_THAT(fact("d['view']"), HasSubstr("2\xE2\x80\xAF"
                                             "001\xE2\x80\xAF"
                                             "000 triangles, 1 mesh "
                                             "at 2\xE2\x80\xAF"
                                             "001 places. That is too much"));
}

TEST_F(KeldReportPicture, IsNotThereOfAModelWithoutTriangles)
{
    for (char const * name : {"no-facets.kit", "bad-facets.kit", "product.kit"}) {
        import(name);
        EXPECT_THAT(contentOf(path()), Not(HasSubstr("id=\"view\""))) << name;
    }
}

TEST_F(KeldReportPicture, ShowsAPartOfAnStlFile)
{
    std::filesystem::copy_file(KELD_TEST_EXAMPLES "/bracket.stl", m_Keld.files() / "bracket.stl");
    import("bracket.stl");
    ask("page_view.py");
    std::string const file = contentOf(KELD_TEST_EXAMPLES "/bracket.stl");
    std::size_t facets = 0;
    for (std::size_t at = 0; (at = file.find("endfacet", at)) != file.npos; ++at)
        ++facets;
    EXPECT_LT(0U, facets);
    EXPECT_EQ(std::to_string(facets), fact("len(d['triangles'])"));
}

/// The page as a browser shows it, without network.
class InBrowser : public Picture
{
protected:
    void SetUp() override
    {
        if (!tests::isThere("chromium"))
            GTEST_SKIP() << "There is no chromium to look at the page with.";
        import("placed-facets.kit");
    }

    void look(std::string const & kind)
    {
        tests::TemporaryDirectory const profile(std::filesystem::current_path(), "keld-browser-");
        ask("browser.py", {profile.path().string(), kind});
    }
};

using KeldReportPictureInBrowser = InBrowser;

TEST_F(KeldReportPictureInBrowser, IsAViewThatIsDrawnAsSharpAsTheScreenIs)
{
    look("phone");
    EXPECT_EQ("live 3 visible hidden True",
              fact("*[d['state'][k] for k in ('state', 'triangles', 'canvas', 'image', 'hint')]"));
    EXPECT_EQ("True", fact("int(d['state']['pixels']) > 10000"));
    EXPECT_EQ("True", fact("all(d['colours'][c] > 2000 for c in ('red', 'green', 'blue'))"));
    EXPECT_EQ("[] []", fact("d['requests'], d['complaints']"));
    EXPECT_EQ("True", fact("d['phone'][0] == d['phone'][1] and d['phone'][2] == d['phone'][3]"));
    EXPECT_EQ("390", fact("d['phone'][4]"));
}

TEST_F(KeldReportPictureInBrowser, IsTurnedMovedAndZoomedByMouseFingersAndKeys)
{
    look("use");
    EXPECT_EQ("{'changed'}", fact("set(d['use']['ways'].values())"));
    EXPECT_EQ("13 12", fact("len(d['use']['ways']), d['use']['different']"));
    EXPECT_EQ("0", fact("d['use']['scrolled']"));
    EXPECT_EQ("[] []", fact("d['requests'], d['complaints']"));
}

TEST_F(KeldReportPictureInBrowser, IsTheStillImageWhileTheContextIsLost)
{
    look("context");
    EXPECT_EQ("still: the context is lost hidden visible False",
              fact("*[d['context']['lost'][k] for k in ('state', 'canvas', 'image', 'hint')]"));
    EXPECT_EQ("live visible hidden True",
              fact("*[d['context']['back'][k] for k in ('state', 'canvas', 'image', 'hint')]"));
    EXPECT_EQ("True", fact("d['context']['same']"));
}

TEST_F(KeldReportPictureInBrowser, StaysAnImageWithoutWebGl)
{
    look("still");
    EXPECT_EQ("still: no WebGL 2 none visible False",
              fact("*[d['state'][k] for k in ('state', 'canvas', 'image', 'hint')]"));
    EXPECT_EQ("True", fact("all(d['colours'][c] > 2000 for c in ('red', 'green', 'blue'))"));
    EXPECT_EQ("[] []", fact("d['requests'], d['complaints']"));
}

} // namespace
