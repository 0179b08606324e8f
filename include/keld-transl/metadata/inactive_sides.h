#ifndef KELD_TRANSL_METADATA_INACTIVE_SIDES_H
#define KELD_TRANSL_METADATA_INACTIVE_SIDES_H

#include <keld-transl/metadata/database_policy.h>

namespace transl_tk {

/// The dictionary side of a store that collects nothing. Asking changes nothing either.
class DictionaryInactive
{
public:
    void addData(DataBaseType const &) {}
    void addData(DataBaseType const &, int const &) {}
    void addData(DataBaseType const &, std::string const &) {}
    void addFeatureType(std::string const &) {}
    void getData(DataBaseType const &, int &) {}
    void getData(DataBaseType const &, std::string &) {}
    void resetData() {}
    void serialize() {}
    void deserialize(Attribute *) {}
};

/// The connection side of a store that keeps nothing.
class ConnectionInactive
{
public:
    void connect(std::string const &, int const &, int const &, int const &, deckAction const &) {}
    void disconnect() {}
    void storeVORN(std::string const &, int const &) {}
    void storeDECK(std::string const &, int const &, int const &) {}
    void storeNEUTRAL(std::string const &, int const &) {}
    void storeData() {}
    void addMetadata() {}
};

} // namespace transl_tk

#endif
