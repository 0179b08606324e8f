#ifndef KELD_TRANSL_EXCHANGE_MODEL_CONTENT_H
#define KELD_TRANSL_EXCHANGE_MODEL_CONTENT_H

#include <keld-transl/model/sub_pool.h>

#include <vector>

namespace transl_tk {

class Assembly;
class Instance;
class Part;

/// A model as the stream sees it: its product structure divided by type, in ascending order of ids.
struct ModelContent
{
    /// Throws a `StreamError` when an assembly is its own descendant.
    explicit ModelContent(SubPool & model);

    SubPool & subPool;
    std::vector<Assembly *> assemblies;
    std::vector<Part *> parts;
    std::vector<Instance *> instances;
};

} // namespace transl_tk

#endif
