#include "Store/StoreConnection.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include <fmt/format.h>
#include <sqlite3.h>

namespace stintbook {

namespace {

constexpr int busyMilliseconds = 2000;

/// The path as SQLite's URI has it; every byte that could mean something there is escaped.
std::string fileURI(const std::filesystem::path& file, std::string_view parameters)
{
    std::string uri = "file:";
    for (const char character : std::filesystem::absolute(file).string()) {
        if (std::isalnum(static_cast<unsigned char>(character)) != 0
            || std::strchr("/._-", character) != nullptr)
            uri += character;
        else
            uri += fmt::format("%{:02x}", static_cast<unsigned char>(character));
    }
    return uri.append("?").append(parameters);
}

SQLite::Database opened(const std::filesystem::path& file, StoreConnection::Access access,
                        const std::string& fileSystem)
{
    const char* vfs = fileSystem.empty() ? nullptr : fileSystem.c_str();
    switch (access) {
    case StoreConnection::Access::readWrite:
        return {file.c_str(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, busyMilliseconds, vfs};
    case StoreConnection::Access::readOnly:
        return {file.c_str(), SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, busyMilliseconds, vfs};
    case StoreConnection::Access::immutable:
        break;
    }
    return {fileURI(file, "immutable=1").c_str(),
            SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_URI, busyMilliseconds, vfs};
}

} // namespace

Query::~Query()
{
    m_statement.tryReset();
    // What was bound is not kept in memory until the next use.
    m_statement.clearBindings();
}

int Query::run()
{
    const int changed = m_statement.exec();
    again();
    return changed;
}

Query& Query::again()
{
    m_statement.reset();
    m_bound = 0;
    return *this;
}

void Query::bindNull()
{
    m_statement.bind(++m_bound);
}

void Query::bindValue(std::string_view text)
{
    m_statement.bind(++m_bound, std::string(text));
}

void Query::bindValue(std::int64_t number)
{
    m_statement.bind(++m_bound, number);
}

void Query::bindValue(double number)
{
    m_statement.bind(++m_bound, number);
}

void Query::bindValue(const UUID& id)
{
    m_statement.bind(++m_bound, id.bytes.data(), static_cast<int>(id.bytes.size()));
}

void Query::read(const SQLite::Column& column, UUID& id)
{
    const auto length = std::min<std::size_t>(id.bytes.size(), static_cast<std::size_t>(column.getBytes()));
    if (length > 0)
        std::memcpy(id.bytes.data(), column.getBlob(), length);
}

StoreConnection::StoreConnection(const std::filesystem::path& file, Access access,
                                 const std::string& fileSystem)
    : m_database(opened(file, access, fileSystem))
{
    set(Checkpoints::leave);
    configure();
}

StoreConnection::StoreConnection(const char* name)
    : m_database(name, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX)
{
    configure();
}

std::unique_ptr<StoreConnection> StoreConnection::inMemory()
{
    return std::unique_ptr<StoreConnection>(new StoreConnection(":memory:"));
}

void StoreConnection::configure()
{
    m_database.exec("PRAGMA synchronous = FULL;"
                    "PRAGMA foreign_keys = ON;"
                    "PRAGMA secure_delete = ON;"
                    "PRAGMA trusted_schema = OFF;"
                    "PRAGMA cell_size_check = ON;"
                    "PRAGMA temp_store = MEMORY;"
                    "PRAGMA mmap_size = 0;");
}

Query StoreConnection::query(std::string_view sql)
{
    auto known = m_statements.find(sql);
    if (known == m_statements.end())
        known = m_statements.try_emplace(sql, m_database, std::string(sql)).first;
    return Query(known->second);
}

std::int64_t StoreConnection::number(const std::string& sql)
{
    return m_database.execAndGet(sql).getInt64();
}

bool StoreConnection::isReadOnly() const
{
    return sqlite3_db_readonly(handle(), "main") != 0;
}

void StoreConnection::set(Checkpoints checkpoints)
{
    const bool leaves = checkpoints == Checkpoints::leave;
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, leaves ? 1 : 0, nullptr);
    sqlite3_wal_autocheckpoint(handle(), leaves ? 0 : 1000);
}

StoreConnection::Impatience::Impatience(StoreConnection& connection)
    : m_connection(connection)
{
    sqlite3_busy_timeout(m_connection.handle(), 0);
}

StoreConnection::Impatience::~Impatience()
{
    sqlite3_busy_timeout(m_connection.handle(), busyMilliseconds);
}

} // namespace stintbook
