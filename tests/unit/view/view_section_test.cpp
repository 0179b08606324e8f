#include "unit/view/view_models.h"
#include "view/view_section.h"

#include <keld-transl/topology/shell.h>

#include <gmock/gmock.h>

namespace {

using namespace tests;
using keld::view::PageLimits;
using keld::view::SceneLimits;
using keld::view::ViewSection;
using testing::HasSubstr;
using testing::Not;

class SectionOfPage : public testing::Test
{
protected:
    struct Page
    {
        std::string policy;
        std::string section;
        std::string script;
    };

    static Page page(PageLimits const & limits = {}, SceneLimits const & sceneLimits = {})
    {
        Scene const scene = gathered(sceneLimits);
        ViewSection const view(scene, limits);
        Page page;
        page.policy = view.policy();
        view.writeSection([&](std::string_view text) { page.section += text; });
        view.writeScript([&](std::string_view text) { page.script += text; });
        return page;
    }

    tests::ScopedPool const m_Pool;
};

TEST_F(SectionOfPage, IsNotThereForAModelWithoutShapes)
{
    Body::create(0, "empty");
    Page const page = this->page();
    EXPECT_EQ("", page.policy);
    EXPECT_EQ("", page.section);
    EXPECT_EQ("", page.script);
}

TEST_F(SectionOfPage, SaysOfExactBodiesHowToGetFacets)
{
    Body::create(0, "exact")->addShell(transl_tk::Shell::create(0));
    Page const page = this->page();
    EXPECT_EQ("", page.policy);
    EXPECT_THAT(page.section, HasSubstr("<code>-o facets=true</code>"));
    EXPECT_THAT(page.section, Not(HasSubstr("<img")));
    EXPECT_EQ("", page.script);
}

TEST_F(SectionOfPage, HasAnImageAndAScript)
{
    aTriangle();
    Page const page = this->page();
    EXPECT_EQ("; img-src data:; script-src '" + std::string(keld::view::ViewScriptHash) + "'",
              page.policy);
    EXPECT_THAT(page.section, HasSubstr("<img id=\"still\" width=\"1280\" height=\"800\""));
    EXPECT_THAT(page.section, HasSubstr("src=\"data:image/png;base64,iVBOR"));
    EXPECT_THAT(page.section, HasSubstr(">1 triangle. <span id=\"picture-hint\" hidden>Drag to"));
    EXPECT_THAT(page.script, HasSubstr("id=\"scene\">\n{\"triangles\":1,"));
    EXPECT_THAT(page.script, HasSubstr("id=\"meshes\">\nAAAA"));
    EXPECT_THAT(page.script, HasSubstr("'use strict';"));
}

TEST_F(SectionOfPage, CountsMeshesAndPlaces)
{
    Part * const part = Part::create(0, "part");
    part->addTriStrip(meshOf({0, 0, 0, 1, 0, 0, 0, 1, 0}, std::vector<int>(3 * 1200, 0)));
    Assembly * const top = Assembly::create(0, "top");
    place(part, top);
    place(part, top, 1);
    EXPECT_THAT(page().section, HasSubstr(">2&#8239;400 triangles, 1 mesh at 2 places. <span"));
}

TEST_F(SectionOfPage, HasTheImageAloneBeyondTheLimitsAndSaysSo)
{
    aTriangle();
    aTriangle();
    Page const page = this->page({1, 1000, 10, 10});
    EXPECT_EQ("; img-src data:", page.policy);
    EXPECT_THAT(page.section, HasSubstr("<img"));
    EXPECT_THAT(page.section, HasSubstr("That is too much for a view that can be turned."));
    EXPECT_THAT(page.section, Not(HasSubstr("shows a part of it")));
    EXPECT_THAT(page.section, Not(HasSubstr("Drag")));
    EXPECT_EQ("", page.script);
}

TEST_F(SectionOfPage, SaysThatTheImageShowsAPart)
{
    aTriangle();
    aTriangle();
    Page const page = this->page({}, {1, 100});
    EXPECT_THAT(page.section, HasSubstr("the picture shows a part of it"));
    EXPECT_THAT(page.section, HasSubstr("<img"));
    EXPECT_EQ("", page.script);
}

} // namespace
