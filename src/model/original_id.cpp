#include <keld-transl/model/original_id.h>

#include <cstdint>

namespace transl_tk {

void OriginalID::setOriginalEnt(void * entity) noexcept
{
    m_OriginalEnt = static_cast<long long>(reinterpret_cast<std::intptr_t>(entity));
}

void OriginalID::setOriginalEnt(long long entity) noexcept
{
    m_OriginalEnt = entity;
}

} // namespace transl_tk
