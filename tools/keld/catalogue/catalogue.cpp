#include "catalogue/catalogue.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <set>
#include <system_error>
#include <unistd.h>

namespace keld {

namespace {

constexpr int NoSqliteCode = 0;
constexpr int ApplicationId = 0x6b656c64; // "keld"
constexpr int SchemaVersion = 1;

constexpr Sql Schema = R"(
PRAGMA journal_mode = OFF;
BEGIN;
CREATE TABLE file (
    id INTEGER PRIMARY KEY,
    path TEXT NOT NULL UNIQUE,
    translator TEXT NOT NULL,
    stored_at TEXT NOT NULL,
    text TEXT NOT NULL
) STRICT;
CREATE TABLE counter (
    file INTEGER NOT NULL REFERENCES file (id) ON DELETE CASCADE,
    key INTEGER NOT NULL,
    value INTEGER NOT NULL,
    PRIMARY KEY (file, key)
) STRICT, WITHOUT ROWID;
CREATE TABLE feature (
    file INTEGER NOT NULL REFERENCES file (id) ON DELETE CASCADE,
    name TEXT NOT NULL,
    count INTEGER NOT NULL,
    PRIMARY KEY (file, name)
) STRICT, WITHOUT ROWID;
PRAGMA application_id = 0x6b656c64;
PRAGMA user_version = 1;
COMMIT;
)";

constexpr Sql DeleteFile = "DELETE FROM file WHERE path = ?";
constexpr Sql InsertFile = "INSERT INTO file (path, translator, stored_at, text)"
                           " VALUES (?, ?, strftime('%Y-%m-%dT%H:%M:%SZ', 'now'), ?) RETURNING id";
constexpr Sql InsertCounter = "INSERT INTO counter (file, key, value) VALUES (?, ?, ?)";
constexpr Sql InsertFeature = "INSERT INTO feature (file, name, count) VALUES (?, ?, ?)";
constexpr Sql SelectFiles = "SELECT id, path, translator, stored_at, text FROM file ORDER BY path";
constexpr Sql SelectCounters = "SELECT key, value FROM counter WHERE file = ?";
constexpr Sql SelectFeatures = "SELECT name, count FROM feature WHERE file = ?";

/// The files whose counter is like that, by `Comparison`. A counter that is not there is 0.
constexpr Sql SelectByCounter[] = {
    "SELECT id FROM file LEFT JOIN counter ON file = id AND key = ? WHERE ifnull(value, 0) < ?",
    "SELECT id FROM file LEFT JOIN counter ON file = id AND key = ? WHERE ifnull(value, 0) <= ?",
    "SELECT id FROM file LEFT JOIN counter ON file = id AND key = ? WHERE ifnull(value, 0) = ?",
    "SELECT id FROM file LEFT JOIN counter ON file = id AND key = ? WHERE ifnull(value, 0) <> ?",
    "SELECT id FROM file LEFT JOIN counter ON file = id AND key = ? WHERE ifnull(value, 0) >= ?",
    "SELECT id FROM file LEFT JOIN counter ON file = id AND key = ? WHERE ifnull(value, 0) > ?",
};

/// Every statement that names tables and columns.
constexpr Sql AllStatements[] = {DeleteFile,  InsertFile,     InsertCounter,      InsertFeature,
                                 SelectFiles, SelectCounters, SelectByCounter[0], SelectFeatures};

[[noreturn]] void fail(std::string const & sentence)
{
    throw DatabaseError(sentence, NoSqliteCode);
}

/// An empty file that is there until the end of the object.
class TemporaryFile
{
public:
    explicit TemporaryFile(std::string path) : m_Path(std::move(path))
    {
        constexpr mode_t Mode = 0666; // less the umask
        ::unlink(m_Path.c_str());     // of a process of the same number that was killed
        int const file = ::open(m_Path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, Mode);
        if (file < 0)
            fail("the database cannot be made: " + std::generic_category().message(errno) + ".");
        ::close(file);
    }
    TemporaryFile(TemporaryFile const &) = delete;
    TemporaryFile & operator=(TemporaryFile const &) = delete;
    ~TemporaryFile() { ::unlink(m_Path.c_str()); }

    std::string const & path() const { return m_Path; }

private:
    std::string m_Path;
};

/// Makes an empty catalogue. It gets its name when it is complete, so that nobody sees half of one;
/// when another process has made one meanwhile, that one is taken.
void make(std::string const & path, std::chrono::milliseconds patience)
{
    TemporaryFile const file(path + "." + std::to_string(::getpid()) + ".part");
    Database(file.path(), patience).run(Schema);
    if (::link(file.path().c_str(), path.c_str()) != 0 && errno != EEXIST)
        fail("the database cannot be made: " + std::generic_category().message(errno) + ".");
}

/// The path to open, behind which a catalogue is as likely as can be told without opening it.
std::string prepared(std::string const & path, Catalogue::Access access,
                     std::chrono::milliseconds patience)
{
    // A relative one might be a name with a meaning of its own for SQLite, such as ":memory:".
    std::string const absolute = std::filesystem::absolute(path);
    std::error_code error;
    auto status = std::filesystem::status(absolute, error);
    if (status.type() == std::filesystem::file_type::not_found &&
        access == Catalogue::Access::Write) {
        make(absolute, patience);
        status = std::filesystem::status(absolute, error);
    }
    switch (status.type()) {
    case std::filesystem::file_type::regular:
        return absolute;
    case std::filesystem::file_type::not_found:
        fail("there is no such file.");
    case std::filesystem::file_type::directory:
        fail("it is a directory, no database.");
    case std::filesystem::file_type::none:
        fail("the database cannot be opened: " + error.message() + ".");
    default:
        fail("it is no regular file.");
    }
}

Metadata readRows(Statement & counters, Statement & features, long long file)
{
    Metadata metadata;
    for (counters.bind(file); counters.step();)
        metadata.counters.emplace(static_cast<int>(counters.number(0)),
                                  static_cast<int>(counters.number(1)));
    for (features.bind(file); features.step();)
        metadata.features.emplace(features.text(0), static_cast<int>(features.number(1)));
    return metadata;
}

std::set<long long> filesWith(Database & database, Condition const & condition)
{
    std::set<long long> files;
    Statement select(database, SelectByCounter[static_cast<int>(condition.comparison)]);
    for (select.bind(condition.counter).bind(condition.number); select.step();)
        files.insert(select.number(0));
    return files;
}

} // namespace

Catalogue::Catalogue(std::string const & path, Access access, std::chrono::milliseconds patience)
    // Readers, too, have to undo what a writer that was killed has left behind.
    : m_Database(prepared(path, access, patience), patience)
{
    checkSchema();
    if (access == Access::Write && m_Database.isReadOnly())
        fail("the database cannot be written.");
    m_Database.run("PRAGMA foreign_keys = ON");
}

void Catalogue::checkSchema()
{
    if (m_Database.number("PRAGMA application_id") != ApplicationId)
        fail("the database is no catalogue of metadata.");
    long long const version = m_Database.number("PRAGMA user_version");
    if (version != SchemaVersion)
        fail("the catalogue has schema version " + std::to_string(version) +
             "; this program knows version " + std::to_string(SchemaVersion) + ".");
    try {
        for (Sql const statement : AllStatements)
            Statement(m_Database, statement);
    } catch (DatabaseError const & error) {
        constexpr int SqliteError = 1; // what preparing a statement of other tables ends with
        if (error.code() == SqliteError)
            fail("the catalogue does not have the tables of its schema version.");
        throw;
    }
}

void Catalogue::store(std::string const & path, std::string const & translator,
                      Metadata const & metadata)
{
    Transaction transaction(m_Database, Transaction::Kind::Write);
    Statement(m_Database, DeleteFile).bind(path).step();
    long long file = 0;
    {
        Statement insert(m_Database, InsertFile);
        insert.bind(path).bind(translator).bind(metadata.text);
        while (insert.step())
            file = insert.number(0);
    }
    Statement counter(m_Database, InsertCounter);
    for (auto const & [key, value] : metadata.counters)
        counter.bind(file).bind(key).bind(value).step();
    Statement feature(m_Database, InsertFeature);
    for (auto const & [name, count] : metadata.features)
        feature.bind(file).bind(name).bind(count).step();
    transaction.commit();
}

std::vector<CatalogueEntry> Catalogue::find(std::vector<Condition> const & conditions)
{
    Transaction const transaction(m_Database, Transaction::Kind::Read);
    std::vector<std::set<long long>> wanted;
    wanted.reserve(conditions.size());
    for (Condition const & condition : conditions)
        wanted.push_back(filesWith(m_Database, condition));

    std::vector<CatalogueEntry> entries;
    Statement files(m_Database, SelectFiles);
    Statement counters(m_Database, SelectCounters);
    Statement features(m_Database, SelectFeatures);
    while (files.step()) {
        long long const id = files.number(0);
        if (!std::all_of(wanted.begin(), wanted.end(),
                         [&](auto const & ids) { return ids.count(id) != 0; }))
            continue;
        Metadata metadata = readRows(counters, features, id);
        metadata.text = files.text(4);
        entries.push_back({files.text(1), files.text(2), files.text(3), std::move(metadata)});
    }
    return entries;
}

} // namespace keld
