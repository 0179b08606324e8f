#include "trail.h"

#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace translator_kit {

namespace {

Breadcrumbs * mapped(std::string const & path)
{
    int const file = open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return nullptr;
    struct stat status = {};
    void * view = MAP_FAILED;
    // Memory behind the end of the file would be a fault.
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
        status.st_size == static_cast<off_t>(sizeof(Breadcrumbs)))
        view = mmap(nullptr, sizeof(Breadcrumbs), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    return view == MAP_FAILED ? nullptr : static_cast<Breadcrumbs *>(view);
}

template <std::size_t Size> void put(char (&field)[Size], std::string_view words)
{
    std::size_t const size = words.copy(field, Size - 1);
    field[size] = '\0';
}

} // namespace

Trail::Trail(std::string const & path)
{
    if (Breadcrumbs * const crumbs = path.empty() ? nullptr : mapped(path))
        m_Crumbs = crumbs;
}

Trail::~Trail()
{
    if (m_Crumbs != &m_Own)
        munmap(m_Crumbs, sizeof(Breadcrumbs));
}

void Trail::phase(std::string_view words)
{
    m_Crumbs->entity[0] = '\0';
    put(m_Crumbs->phase, words);
}

void Trail::entity(std::string_view words)
{
    put(m_Crumbs->entity, words);
}

std::string Trail::words() const
{
    std::string const phase = m_Crumbs->phase;
    std::string const entity = m_Crumbs->entity;
    std::string result = phase.empty() ? "" : "in the phase \"" + phase + "\"";
    if (!entity.empty())
        result += (result.empty() ? "at " : ", at ") + entity;
    return result;
}

} // namespace translator_kit
