#ifndef KELD_TRANSLATOR_KIT_JOINED_POLICY_H
#define KELD_TRANSLATOR_KIT_JOINED_POLICY_H

#include <keld-transl/metadata/database_dictionary.h>
#include <keld-transl/metadata/database_policy.h>
#include <keld-transl/metadata/inactive_sides.h>

namespace translator_kit {

/// A store of metadata made of two sides: a `Dictionary` that collects, and a `Connection` to where
/// the data is kept. Each side has the operations of its half of `DataBasePolicy`; derive to have
/// one side know the other.
template <class Dictionary, class Connection>
class JoinedPolicy : public transl_tk::DataBasePolicy, protected Dictionary, protected Connection
{
public:
    using Dictionary::addFeatureType;

    void addData(transl_tk::DataBaseType const & type) override { Dictionary::addData(type); }
    void addData(transl_tk::DataBaseType const & type, int const & value) override
    {
        Dictionary::addData(type, value);
    }
    void addData(transl_tk::DataBaseType const & type, std::string const & text) override
    {
        Dictionary::addData(type, text);
    }
    void getData(transl_tk::DataBaseType const & type, int & value) override
    {
        Dictionary::getData(type, value);
    }
    void getData(transl_tk::DataBaseType const & type, std::string & text) override
    {
        Dictionary::getData(type, text);
    }
    void resetData() override { Dictionary::resetData(); }
    void serialize() override { Dictionary::serialize(); }
    void deserialize(transl_tk::Attribute * attribute) override
    {
        Dictionary::deserialize(attribute);
    }

    void connect(std::string const & database, int const & first, int const & second,
                 int const & third, transl_tk::deckAction const & action) override
    {
        Connection::connect(database, first, second, third, action);
    }
    void disconnect() override { Connection::disconnect(); }
    void storeVORN(std::string const & text, int const & number) override
    {
        Connection::storeVORN(text, number);
    }
    void storeDECK(std::string const & text, int const & first, int const & second) override
    {
        Connection::storeDECK(text, first, second);
    }
    void storeNEUTRAL(std::string const & text, int const & number) override
    {
        Connection::storeNEUTRAL(text, number);
    }
    void storeData() override { Connection::storeData(); }
    void addMetadata() override { Connection::addMetadata(); }
};

/// Collects, and keeps nothing: what a translator counts into.
using CollectingPolicy = JoinedPolicy<transl_tk::DataBaseDictionary, transl_tk::ConnectionInactive>;

} // namespace translator_kit

#endif
