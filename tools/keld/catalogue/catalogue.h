#ifndef KELD_TOOLS_CATALOGUE_CATALOGUE_H
#define KELD_TOOLS_CATALOGUE_CATALOGUE_H

#include "catalogue/condition.h"
#include "catalogue/metadata.h"
#include "catalogue/sqlite.h"

#include <chrono>
#include <string>
#include <vector>

namespace keld {

/// A file whose metadata stands in a catalogue.
struct CatalogueEntry
{
    std::string path;
    std::string translator;
    std::string storedAt; ///< UTC, as in 2026-01-31T12:00:00Z
    Metadata metadata;
};

/// The metadata of files in a SQLite database, one file of schema version 1; docs/catalogue.md has
/// the tables.
///
/// Any number of processes may use one catalogue at a time: each storing is a transaction, and who
/// finds the database held by another waits. All operations throw DatabaseError.
class Catalogue
{
public:
    enum class Access { Read, Write };

    static constexpr std::chrono::milliseconds DefaultPatience = std::chrono::seconds(10);

    /// Opens the catalogue `path`. With `Access::Write` one that is not there is made, as a whole
    /// or not at all.
    Catalogue(std::string const & path, Access access,
              std::chrono::milliseconds patience = DefaultPatience);

    /// Stores an entry with the current time, in the place of the one that its path had.
    void store(std::string const & path, std::string const & translator, Metadata const & metadata);

    /// The entries that meet all conditions, by path.
    std::vector<CatalogueEntry> find(std::vector<Condition> const & conditions);

private:
    void checkSchema();

    Database m_Database;
};

} // namespace keld

#endif
