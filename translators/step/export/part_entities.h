#ifndef KELD_STEP_EXPORT_PART_ENTITIES_H
#define KELD_STEP_EXPORT_PART_ENTITIES_H

#include <string>
#include <vector>

namespace transl_tk {
class Base;
class Part;
} // namespace transl_tk

namespace step {

/// The entities of a part that may have facts or names of their own, each once: bodies, faces,
/// edges outside of faces, and with `withEdges` those of the faces.
std::vector<transl_tk::Base *> entitiesOf(transl_tk::Part & part, bool withEdges);

/// The name that an entity of `part` has of its own, or nothing.
std::string nameOf(transl_tk::Base & entity, transl_tk::Part & part);

} // namespace step

#endif
