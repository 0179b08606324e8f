#ifndef KELD_TRANSL_METADATA_DATABASE_DICTIONARY_H
#define KELD_TRANSL_METADATA_DATABASE_DICTIONARY_H

#include <keld-transl/export.h>
#include <keld-transl/metadata/database_type.h>

#include <string>
#include <unordered_map>

namespace transl_tk {

class Attribute;

/// Named numbers and texts about a model. Copies hold the same text and numbers.
///
/// A dictionary belongs to one thread at a time.
class KELD_TRANSL_EXPORT DataBaseDictionary
{
public:
    /// Adds 1 to the number of `type`, which starts at 0. The largest int stays what it is.
    void addData(DataBaseType const & type);

    /// Sets the number of `type`, whatever it was.
    void addData(DataBaseType const & type, int const & value);

    /// For `TextList`, appends `text` and a comma to the collected text. For `FeatureCounts`, adds
    /// 1 to the counter of that name. Any other type, and an empty text, change nothing.
    void addData(DataBaseType const & type, std::string const & text);

    /// Counts a feature by the first of these that its name holds, in capitals: "CHAMFER" and
    /// "FILLET" under `BlendFeatures`, "HOLE" under `HoleFeatures`. Any other name is not counted.
    void addFeatureType(std::string const & name);

    /// The number of `type`; 0 when it has none.
    void getData(DataBaseType const & type, int & value);

    /// For `TextList`, the collected text. For `FeatureCounts`, "Metadata: <name> | <count><br>" of
    /// every counter, in no order to rely on. For any other type `text` stays as it is.
    void getData(DataBaseType const & type, std::string & text);

    /// Empties the dictionary.
    void resetData();

    /// Adds an attribute of type 14, with an empty name, to the current sub-pool, so that the
    /// dictionary travels with the model. Does nothing when there is no sub-pool.
    ///
    /// Its values are: twice the number of numbers, then each as key and number; twice the number
    /// of named counters, then each as name and count; the collected text. Keys and numbers are
    /// int, the rest is text. A text ends at its first zero byte.
    void serialize();

    /// Takes over what `serialize` wrote into `attribute`, whose type and name do not matter. Keys
    /// and names that are there already keep their numbers, and the text is replaced. An attribute
    /// that `isDictionary` refuses changes nothing.
    void deserialize(Attribute * attribute);

    /// Whether `deserialize` would take `attribute` over: the values are those that `serialize`
    /// writes, in kind and number, and nothing follows them. False for null.
    static bool isDictionary(Attribute * attribute);

private:
    bool insertFrom(Attribute * attribute);

    std::string m_Text;
    std::unordered_map<DataBaseType, int> m_Counters;
    std::unordered_map<std::string, int> m_Features;
};

} // namespace transl_tk

#endif
