#include "view/view_section.h"

#include "view/png.h"
#include "view/view_script.h"

namespace keld::view {

namespace {

constexpr std::size_t StillWidth = 1280;
constexpr std::size_t StillHeight = 800;

/// With a thin blank between thousands.
std::string grouped(std::size_t number)
{
    std::string digits = std::to_string(number);
    for (std::size_t i = digits.size(); i > 3;)
        digits.insert(i -= 3, "&#8239;");
    return digits;
}

std::string counted(std::size_t number, char const * one, char const * many)
{
    return grouped(number) + " " + (number == 1 ? one : many);
}

} // namespace

char const * const ViewScriptHash = "sha256-YEqNx7vdr7ZYiKS098VHQXouGOGABjhdrpDxgttnHRg=";

ViewSection::ViewSection(Scene const & scene, PageLimits const & limits)
    : m_Scene(scene), m_Limits(limits)
{}

bool ViewSection::isLive() const
{
    return !m_Scene.isEmpty() && fitsPage(m_Scene, m_Limits);
}

std::string ViewSection::policy() const
{
    if (m_Scene.isEmpty())
        return {};
    return "; img-src data:" +
           (isLive() ? "; script-src '" + std::string(ViewScriptHash) + "'" : "");
}

void ViewSection::writeSection(Sink const & sink) const
{
    if (m_Scene.isEmpty()) {
        if (m_Scene.hasShells)
            sink(
                "<section id=\"view\">\n<h2>Picture</h2>\n<p class=\"none\">There are no facets to "
                "make a picture of; import a STEP, IGES or BREP file with <code>-o facets=true"
                "</code> to get one.</p>\n</section>\n");
        return;
    }
    Image const still = draw(m_Scene, wholeScene(m_Scene), StillWidth, StillHeight);
    std::string const size = "width=\"" + std::to_string(StillWidth) + "\" height=\"" +
                             std::to_string(StillHeight) + "\"";
    sink("<section id=\"view\">\n<h2>Picture</h2>\n<div id=\"picture\" class=\"picture\"><img "
         "id=\"still\" " +
         size +
         " alt=\"The model from the front, the right and above\" src=\"data:image/png;base64,");
    sink(Base64::text(pngOf(still)));
    sink("\"></div>\n<p class=\"about\">" + counted(m_Scene.triangles, "triangle", "triangles"));
    if (m_Scene.occurrences.size() != 1)
        sink(", " + counted(m_Scene.meshes.size(), "mesh", "meshes") + " at " +
             counted(m_Scene.occurrences.size(), "place", "places"));
    sink(".");
    if (!m_Scene.complete || !still.complete)
        sink(" The model is too large to be drawn whole; the picture shows a part of it.");
    if (isLive())
        sink(" <span id=\"picture-hint\" hidden>Drag to turn it, with the right button or Shift to "
             "move it; the wheel or two fingers zoom. With keys: arrows, with Shift to move, + and "
             "&minus;, Home to go back.</span>");
    else
        sink(" That is too much for a view that can be turned.");
    sink("</p>\n</section>\n");
}

void ViewSection::writeScript(Sink const & sink) const
{
    if (!isLive())
        return;
    sink("<script type=\"application/json\" id=\"scene\">\n");
    sink(sceneJson(m_Scene, wholeScene(m_Scene)));
    sink("</script>\n<script type=\"application/octet-stream\" id=\"meshes\">\n");
    Base64 meshes(sink);
    writeMeshes(m_Scene, meshes);
    sink("</script>\n<script>");
    sink(ViewScript);
    sink("</script>\n");
}

} // namespace keld::view
