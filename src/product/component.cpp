#include <keld-transl/product/component.h>

namespace transl_tk {

Component::~Component() = default;

} // namespace transl_tk
