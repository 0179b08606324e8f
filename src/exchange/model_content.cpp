#include "exchange/model_content.h"

#include "exchange/stream_error.h"
#include "product/proxy_assembly.h"

#include <keld-transl/product/gather_hierarchies.h>

#include <unordered_map>

namespace transl_tk {

namespace {

/// The assembly that lists `assembly` as its child, null when there is none.
Assembly * parentOf(Assembly * assembly)
{
    Assembly * const parent = livingParentOf(assembly);
    if (parent == nullptr || !static_cast<ProxyAssembly *>(parent)->children().contains(assembly))
        return nullptr;
    return parent;
}

/// Goes up from each assembly until it meets one that an earlier way has passed.
void refuseRings(std::vector<Assembly *> const & assemblies)
{
    std::unordered_map<Assembly *, std::size_t> wayOf;
    std::size_t way = 0;
    for (Assembly * const start : assemblies) {
        ++way;
        Assembly * above = start;
        while (above != nullptr && wayOf.try_emplace(above, way).second)
            above = parentOf(above);
        if (above != nullptr && wayOf[above] == way)
            throw StreamError("The assembly \"" + std::string(above->getName()) +
                              "\" is its own descendant; such a model cannot be exchanged.");
    }
}

} // namespace

ModelContent::ModelContent(SubPool & model) : subPool(model)
{
    GatherHierarchies gather(assemblies, parts, instances);
    model.m_Hierarchies.m_Entities.forEach([&](int id, Base * hierarchy) {
        gather({id, hierarchy});
    });
    refuseRings(assemblies);
}

} // namespace transl_tk
