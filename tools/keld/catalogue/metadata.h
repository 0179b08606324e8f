#ifndef KELD_TOOLS_CATALOGUE_METADATA_H
#define KELD_TOOLS_CATALOGUE_METADATA_H

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/metadata/database_type.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace keld {

/// What a dictionary holds, laid open: a `DataBaseDictionary` answers for keys that are asked for,
/// but does not list them.
struct Metadata
{
    std::map<int, int> counters; ///< by `DataBaseType`
    std::map<std::string, int> features;
    std::string text;

    bool operator==(Metadata const &) const = default;
};

/// What `DataBaseDictionary::serialize` wrote into `attribute`; nothing when it did not write it.
std::optional<Metadata> readMetadata(transl_tk::Attribute * attribute);

/// Name of a counter, such as "spot welds"; "key 1234" for a number without a name.
std::string counterName(int key);

/// The counter of that name. Case does not matter, nor which of blank, "-" and "_" divides words.
std::optional<int> counterKey(std::string_view name);

/// The counters with their names, in the order for readers: product structure, faces and facets,
/// surfaces, curves, what hangs on them, other keys.
std::vector<std::pair<std::string, int>> namedCounters(Metadata const & metadata);

} // namespace keld

#endif
