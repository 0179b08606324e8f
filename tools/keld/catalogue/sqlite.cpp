#include "catalogue/sqlite.h"

#include <sqlite3.h>
#include <system_error>

namespace keld {

namespace {

std::string secondsText(std::chrono::milliseconds time)
{
    std::string text = std::to_string(time.count() / 1000);
    if (long long const rest = time.count() % 1000; rest != 0)
        text += "." + std::to_string(1000 + rest).substr(1);
    return text + (time.count() == 1000 ? " second" : " seconds");
}

/// The system's words for what went wrong, where it was the system that failed.
std::string systemWords(sqlite3 * handle)
{
    int const error = sqlite3_system_errno(handle);
    return error != 0 ? ": " + std::generic_category().message(error) : "";
}

} // namespace

Database::Database(std::string const & path, std::chrono::milliseconds patience)
    : m_Patience(patience)
{
    int const code = sqlite3_open_v2(path.c_str(), &m_Handle, SQLITE_OPEN_READWRITE, nullptr);
    try {
        if (m_Handle == nullptr)
            throw std::bad_alloc();
        if (code != SQLITE_OK)
            fail(code);
        sqlite3_extended_result_codes(m_Handle, 1);
        sqlite3_busy_timeout(m_Handle, static_cast<int>(patience.count()));
    } catch (...) {
        sqlite3_close(m_Handle);
        throw;
    }
}

Database::~Database()
{
    sqlite3_close(m_Handle);
}

bool Database::isReadOnly() const
{
    return sqlite3_db_readonly(m_Handle, "main") != 0;
}

void Database::run(Sql sql)
{
    int const code = sqlite3_exec(m_Handle, sql.text(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        fail(code);
}

long long Database::number(Sql sql)
{
    Statement statement(*this, sql);
    return statement.step() ? statement.number(0) : 0;
}

void Database::fail(int code) const
{
    constexpr int PrimaryCode = 0xFF;
    switch (code & PrimaryCode) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw DatabaseError("another process holds the database; gave up after " +
                                secondsText(m_Patience) + ".",
                            code);
    case SQLITE_NOTADB:
        throw DatabaseError("it is no database.", code);
    case SQLITE_CORRUPT:
        throw DatabaseError("the database is damaged.", code);
    case SQLITE_READONLY:
    case SQLITE_PERM:
        throw DatabaseError("the database cannot be written.", code);
    case SQLITE_FULL:
        throw DatabaseError("there is no space left for the database.", code);
    case SQLITE_CANTOPEN:
        throw DatabaseError("the database cannot be opened" + systemWords(m_Handle) + ".", code);
    case SQLITE_IOERR:
        throw DatabaseError("the database cannot be read or written" + systemWords(m_Handle) + ".",
                            code);
    default:
        throw DatabaseError("the database failed: " + std::string(sqlite3_errmsg(m_Handle)) + ".",
                            code);
    }
}

Statement::Statement(Database & database, Sql sql) : m_Database(database)
{
    constexpr int WholeText = -1;
    int const code =
        sqlite3_prepare_v2(database.m_Handle, sql.text(), WholeText, &m_Statement, nullptr);
    if (code != SQLITE_OK)
        database.fail(code);
}

Statement::~Statement()
{
    sqlite3_finalize(m_Statement);
}

Statement & Statement::bind(long long number)
{
    int const code = sqlite3_bind_int64(m_Statement, ++m_Parameter, number);
    if (code != SQLITE_OK)
        m_Database.fail(code);
    return *this;
}

Statement & Statement::bind(std::string_view text)
{
    // The statement takes a copy; its way of saying so is a cast of the old kind.
    auto const copy = reinterpret_cast<sqlite3_destructor_type>(-1);
    int const code = sqlite3_bind_text64(m_Statement, ++m_Parameter, text.data(), text.size(), copy,
                                         SQLITE_UTF8);
    if (code != SQLITE_OK)
        m_Database.fail(code);
    return *this;
}

bool Statement::step()
{
    int const code = sqlite3_step(m_Statement);
    if (code == SQLITE_ROW)
        return true;
    m_Parameter = 0;
    sqlite3_reset(m_Statement);
    if (code != SQLITE_DONE)
        m_Database.fail(code);
    return false;
}

long long Statement::number(int column) const
{
    return sqlite3_column_int64(m_Statement, column);
}

std::string Statement::text(int column) const
{
    void const * const bytes = sqlite3_column_text(m_Statement, column);
    int const size = sqlite3_column_bytes(m_Statement, column);
    return bytes != nullptr
               ? std::string(static_cast<char const *>(bytes), static_cast<std::size_t>(size))
               : std::string();
}

Transaction::Transaction(Database & database, Kind kind) : m_Database(database)
{
    if (kind == Kind::Write)
        database.run("BEGIN IMMEDIATE");
    else
        database.run("BEGIN");
}

Transaction::~Transaction()
{
    // Some failures have ended the transaction already.
    if (sqlite3_get_autocommit(m_Database.m_Handle) == 0)
        sqlite3_exec(m_Database.m_Handle, "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::commit()
{
    m_Database.run("COMMIT");
}

} // namespace keld
