#ifndef KELD_STEP_EXPORT_LISTED_H
#define KELD_STEP_EXPORT_LISTED_H

#include <vector>

namespace step {

/// What `forEach...` of the toolkit visits, in a list. Nulls are left out.
template <class Entity, class Owner>
std::vector<Entity *> listed(Owner & owner,
                             bool (Owner::*forEach)(bool (*)(Entity *, void *), void *))
{
    std::vector<Entity *> result;
    (owner.*forEach)(
        [](Entity * entity, void * list) {
            if (entity != nullptr)
                static_cast<std::vector<Entity *> *>(list)->push_back(entity);
            return true;
        },
        &result);
    return result;
}

} // namespace step

#endif
