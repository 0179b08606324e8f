#ifndef KELD_TOOLS_CATALOGUE_METADATA_STORE_H
#define KELD_TOOLS_CATALOGUE_METADATA_STORE_H

#include "catalogue/catalogue.h"

#include <keld-translator-kit/joined_policy.h>

#include <memory>

namespace keld {

/// A host's store of metadata: a dictionary joined with a catalogue.
///
///     MetadataStore store;
///     store.addMetadata();                                // after a run for metadata alone
///     store.connect("parts.db", 10000, 0, 0, CatalogueForWriting);
///     store.storeNEUTRAL("/parts/bracket.stl", 0);
///     store.storeVORN("stl", 0);
///     store.storeData();
///     store.disconnect();
///
/// DatabaseError is thrown where the database fails, std::runtime_error by `addMetadata`.
class MetadataStore : public translator_kit::JoinedPolicy<transl_tk::DataBaseDictionary,
                                                          transl_tk::ConnectionInactive>
{
public:
    /// Opens the catalogue `database`, waiting at most `patience` milliseconds wherever another
    /// process holds it; the next two numbers mean nothing here.
    void connect(std::string const & database, int const & patience, int const &, int const &,
                 transl_tk::deckAction const & action) override;
    void disconnect() override;

    /// Names the file that the metadata is of.
    void storeNEUTRAL(std::string const & path, int const &) override;

    /// Names the translator that has read it.
    void storeVORN(std::string const & translator, int const &) override;

    /// Stores what the dictionary holds.
    void storeData() override;

    /// Takes the metadata of the current model over into the dictionary. Throws a sentence when
    /// the model has none, or what has its place is none.
    void addMetadata() override;

    /// What the dictionary holds. There must be a current model.
    Metadata content();

private:
    std::unique_ptr<Catalogue> m_Catalogue;
    std::string m_Path;
    std::string m_Translator;
};

/// What `MetadataStore::connect` opens a catalogue for.
inline constexpr auto CatalogueForReading = static_cast<transl_tk::deckAction>(0);
inline constexpr auto CatalogueForWriting = static_cast<transl_tk::deckAction>(1);

} // namespace keld

#endif
