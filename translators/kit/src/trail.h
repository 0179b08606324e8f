#ifndef KELD_TRANSLATOR_KIT_TRAIL_H
#define KELD_TRANSLATOR_KIT_TRAIL_H

#include <keld-translator-kit/breadcrumbs.h>

#include <string>
#include <string_view>

namespace translator_kit {

/// Where the translator is, in a file that outlives it.
class Trail
{
public:
    /// Writes into the file `path`. Where it is none, or not of the right size, the trail stays in
    /// this process.
    explicit Trail(std::string const & path);
    Trail(Trail const &) = delete;
    Trail & operator=(Trail const &) = delete;
    ~Trail();

    /// A new phase is at no entity.
    void phase(std::string_view words);
    void entity(std::string_view words);

    /// `in the phase "parse", at #12`, or what of it is known.
    std::string words() const;

private:
    Breadcrumbs m_Own = {};
    Breadcrumbs * m_Crumbs = &m_Own;
};

} // namespace translator_kit

#endif
