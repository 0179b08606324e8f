#include "model/entity.h"

#include <keld-transl/product/component.h>
#include <keld-transl/reporting/logger_policy.h>

namespace transl_tk {

Component::~Component()
{
    // A crash report names the component that is being read: it must not be asked for its name when
    // it is gone.
    SubPool const * const subPool = CurrentSubPool::get();
    if (subPool != nullptr && subPool->m_Logger != nullptr &&
        subPool->m_Logger->getProcessingComponent() == this)
        subPool->m_Logger->setProcessingComponent(nullptr);
}

} // namespace transl_tk
