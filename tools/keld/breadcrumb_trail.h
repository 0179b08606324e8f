#ifndef KELD_TOOLS_BREADCRUMB_TRAIL_H
#define KELD_TOOLS_BREADCRUMB_TRAIL_H

#include <string>

namespace keld {

/// Memory in which a translator says where it is. It is a file without a name, so that nothing is
/// left of it, whoever is killed.
class BreadcrumbTrail
{
public:
    /// Where the system has no memory for it, there is no trail.
    BreadcrumbTrail();
    BreadcrumbTrail(BreadcrumbTrail const &) = delete;
    BreadcrumbTrail & operator=(BreadcrumbTrail const &) = delete;
    ~BreadcrumbTrail();

    /// A path by which other processes of this user open it while this process lives; empty without
    /// a trail.
    std::string path() const;

    /// Where the translator was last, as words to stand behind those that tell of its end:
    /// `, in the phase "parse", at #12`. Empty when it told nothing. Any bytes are expected of it;
    /// what comes is short and fit for a terminal.
    std::string place() const;

private:
    int m_Fd;
};

} // namespace keld

#endif
