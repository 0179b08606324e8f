#include "breadcrumb_trail.h"

#include "safe_text.h"

#include <keld-common/files.h>
#include <keld-translator-kit/breadcrumbs.h>

#include <fcntl.h>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace keld {

using translator_kit::Breadcrumbs;

namespace {

/// Bytes of a field that are told.
constexpr std::size_t LongestText = 200;

int createMemory()
{
    int const memory = memfd_create("keld_breadcrumbs", MFD_CLOEXEC);
    // With its page reserved: a lack of memory must not become a fault in the translator.
    if (memory >= 0 && posix_fallocate(memory, 0, sizeof(Breadcrumbs)) != 0) {
        close(memory);
        return -1;
    }
    return memory;
}

/// The text in a field, cut between two characters.
template <std::size_t Size> std::string textIn(char const (&field)[Size])
{
    std::string_view text(field, Size);
    text = text.substr(0, text.find('\0'));
    if (text.size() <= LongestText)
        return terminalText(text);
    std::size_t length = LongestText;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    return terminalText(text.substr(0, length)) + "...";
}

} // namespace

BreadcrumbTrail::BreadcrumbTrail() : m_Fd(createMemory()) {}

BreadcrumbTrail::~BreadcrumbTrail()
{
    if (m_Fd >= 0)
        close(m_Fd);
}

std::string BreadcrumbTrail::path() const
{
    if (m_Fd < 0)
        return {};
    return "/proc/" + std::to_string(getCurrentProcessId()) + "/fd/" + std::to_string(m_Fd);
}

std::string BreadcrumbTrail::place() const
{
    Breadcrumbs crumbs = {};
    // A translator may have cut the file: a short read leaves zeros.
    if (m_Fd < 0 || pread(m_Fd, &crumbs, sizeof(crumbs), 0) < 0)
        return {};
    std::string const phase = textIn(crumbs.phase);
    std::string const entity = textIn(crumbs.entity);
    std::string words;
    if (!phase.empty())
        words += ", in the phase \"" + phase + "\"";
    if (!entity.empty())
        words += ", at " + entity;
    return words;
}

} // namespace keld
