#ifndef KELD_TOOLS_VIEW_VIEW_SECTION_H
#define KELD_TOOLS_VIEW_VIEW_SECTION_H

#include "view/base64.h"
#include "view/scene_data.h"

namespace keld::view {

/// The picture of a model as a part of a page: a still image, and where the model is not too large
/// and the browser can, a script that puts a view in its place.
class ViewSection
{
public:
    explicit ViewSection(Scene const & scene, PageLimits const & limits = {});

    /// What to append to a page's policy for the section; empty for nothing.
    std::string policy() const;

    /// The section, empty for a model that has nothing to show.
    void writeSection(Sink const & sink) const;

    /// What stands behind everything else in the page: the meshes and the script.
    void writeScript(Sink const & sink) const;

private:
    bool isLive() const;

    Scene const & m_Scene;
    PageLimits m_Limits;
};

/// The hash by which the page's policy knows the script. A browser runs no script of another hash;
/// the test of the page's policy says the right one.
extern char const * const ViewScriptHash;

} // namespace keld::view

#endif
