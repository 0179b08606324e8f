#ifndef KELD_TRANSL_METADATA_DATABASE_POLICY_H
#define KELD_TRANSL_METADATA_DATABASE_POLICY_H

#include <keld-transl/export.h>
#include <keld-transl/metadata/database_type.h>

#include <string>

namespace transl_tk {

class Attribute;

/// What `connect` is to do with a store. Whoever writes a store defines the enumerators.
enum deckAction : int;

/// A store of metadata: a dictionary that collects named numbers and texts, and a connection to
/// where they are kept.
///
/// The program around the toolkit derives the class that joins both. It may take its dictionary
/// from `DataBaseDictionary`, and from `DictionaryInactive` or `ConnectionInactive` the side that
/// it leaves out. The toolkit itself only fills the dictionary, in `addDataCadDB`.
///
/// The order of the operations is part of the interface. It is that of their use: open the store,
/// collect, hand over with the model, read back and ask, keep, with the destructor behind all.
class KELD_TRANSL_EXPORT DataBasePolicy
{
public:
    DataBasePolicy() = default;
    DataBasePolicy(DataBasePolicy const &) = default;
    DataBasePolicy & operator=(DataBasePolicy const &) = default;

    /// The arguments have the meaning that the store gives them, here and below.
    virtual void connect(std::string const & database, int const & first, int const & second,
                         int const & third, deckAction const & action) = 0;
    virtual void disconnect() = 0;

    /// See `DataBaseDictionary` for what is expected of these.
    virtual void addData(DataBaseType const & type, int const & value) = 0;
    virtual void addData(DataBaseType const & type, std::string const & text) = 0;
    virtual void addData(DataBaseType const & type) = 0;
    virtual void resetData() = 0;
    virtual void serialize() = 0;
    virtual void deserialize(Attribute * attribute) = 0;
    virtual void getData(DataBaseType const & type, int & value) = 0;
    virtual void getData(DataBaseType const & type, std::string & text) = 0;

    virtual void storeVORN(std::string const & text, int const & number) = 0;
    virtual void storeDECK(std::string const & text, int const & first, int const & second) = 0;
    virtual void storeNEUTRAL(std::string const & text, int const & number) = 0;
    virtual void storeData() = 0;
    virtual void addMetadata() = 0;

    virtual ~DataBasePolicy();

    /// Counts a feature by its name, as `DataBaseDictionary::addFeatureType` does, with `addData`
    /// of this object.
    void addFeatureType(std::string const & name);
};

} // namespace transl_tk

#endif
