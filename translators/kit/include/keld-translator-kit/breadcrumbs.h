#ifndef KELD_TRANSLATOR_KIT_BREADCRUMBS_H
#define KELD_TRANSLATOR_KIT_BREADCRUMBS_H

namespace translator_kit {

/// Name of the option, of type text, by which a host asks a translator to say where it is: the path
/// of a file of `sizeof(Breadcrumbs)` bytes, all zero, which need not have a name of its own: a
/// descriptor below /proc will do. The kit keeps `Run::phase` and `Run::at` in it, where the host
/// finds them when the translator is gone, whatever ended it.
inline constexpr char BreadcrumbsOption[] = "BREADCRUMBS_FILE";

/// The content of that file: two texts, each ended by a zero and cut to its field.
struct Breadcrumbs
{
    char phase[512];
    char entity[3584];
};
static_assert(sizeof(Breadcrumbs) == 4096);

} // namespace translator_kit

#endif
