#ifndef KELD_TOOLS_CATALOGUE_SQLITE_H
#define KELD_TOOLS_CATALOGUE_SQLITE_H

#include <chrono>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace keld {

/// What keeps a database from being used, in a sentence.
class DatabaseError : public std::runtime_error
{
public:
    DatabaseError(std::string const & sentence, int code)
        : std::runtime_error(sentence), m_Code(code)
    {}

    /// The result code of SQLite.
    int code() const noexcept { return m_Code; }

private:
    int m_Code;
};

/// The text of a statement. Only a constant of this program is one, so that no text from elsewhere
/// becomes part of a statement; that is bound to it.
class Sql
{
public:
    consteval Sql(char const * text) : m_Text(text) {}

    char const * text() const { return m_Text; }

private:
    char const * m_Text;
};

/// A connection to a database file.
class Database
{
public:
    /// Opens a file that is there, for reading alone where it cannot be opened for both. Waits at
    /// most `patience` wherever another process holds it. Throws DatabaseError, here and below.
    Database(std::string const & path, std::chrono::milliseconds patience);
    Database(Database const &) = delete;
    Database & operator=(Database const &) = delete;
    ~Database();

    bool isReadOnly() const;

    /// Runs statements that give no rows.
    void run(Sql sql);

    /// The first column of the first row.
    long long number(Sql sql);

private:
    friend class Statement;
    friend class Transaction;

    [[noreturn]] void fail(int code) const;

    sqlite3 * m_Handle = nullptr;
    std::chrono::milliseconds m_Patience;
};

/// A prepared statement.
class Statement
{
public:
    Statement(Database & database, Sql sql);
    Statement(Statement const &) = delete;
    Statement & operator=(Statement const &) = delete;
    ~Statement();

    /// Set the parameters from 1 on, in order.
    Statement & bind(long long number);
    Statement & bind(std::string_view text);

    /// Goes to the next row; false when there is none, and then the statement may be bound anew.
    bool step();

    long long number(int column) const;
    std::string text(int column) const;

private:
    Database & m_Database;
    sqlite3_stmt * m_Statement = nullptr;
    int m_Parameter = 0;
};

/// All or nothing: what is done until `commit` is undone when it is not reached.
class Transaction
{
public:
    enum class Kind { Read, Write };

    /// One that writes has the file to itself for writing from the start, so that it does not fail
    /// half-way because of another.
    Transaction(Database & database, Kind kind);
    Transaction(Transaction const &) = delete;
    Transaction & operator=(Transaction const &) = delete;
    ~Transaction();

    void commit();

private:
    Database & m_Database;
};

} // namespace keld

#endif
