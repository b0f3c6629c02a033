#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include "Base/Decimal.h"
#include "Base/Identifier.h"
#include "Base/Instant.h"
#include "Base/RawValue.h"

namespace stintbook {

/// One use of a prepared statement. Values are bound from the first parameter on, columns are taken from the
/// first column on; afterwards the statement is free for its next use.
///
/// Errors are thrown as SQLite::Exception; `StoreDatabase` catches them.
class Query {
public:
    explicit Query(SQLite::Statement& statement)
        : m_statement(statement)
    {
    }
    ~Query();
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    template <typename... Values> Query& bind(const Values&... values)
    {
        (bindValue(values), ...);
        return *this;
    }

    /// Steps to the next row; false when there is none.
    bool next()
    {
        m_column = 0;
        return m_statement.executeStep();
    }
    /// Runs a statement that yields no row; answers how many rows it changed. May be repeated with new values.
    int run();

    /// Free for new values.
    Query& again();

    /// The next column of the present row. A view of its text lives until the next step.
    template <typename T> T take()
    {
        T value{};
        read(m_statement.getColumn(m_column++), value);
        return value;
    }

private:
    void bindNull();
    void bindValue(std::string_view text);
    void bindValue(const std::string& text) { bindValue(std::string_view(text)); }
    void bindValue(const char* text) { bindValue(std::string_view(text)); }
    void bindValue(bool flag) { bindValue(std::int64_t{flag}); }
    void bindValue(int number) { bindValue(std::int64_t{number}); }
    void bindValue(std::int64_t number);
    void bindValue(double number);
    void bindValue(Instant at) { bindValue(at.secondsSinceEpoch); }
    void bindValue(Seconds length) { bindValue(length.value); }
    void bindValue(const Decimal& number) { bindValue(std::string_view(number.text())); }
    void bindValue(const UUID& id);
    template <typename Kind> void bindValue(const Identifier<Kind>& id) { bindValue(id.uuid); }
    template <typename E>
        requires std::is_enum_v<E>
    void bindValue(E value)
    {
        bindValue(rawValue(value));
    }
    template <typename T> void bindValue(const std::optional<T>& value)
    {
        if (value)
            bindValue(*value);
        else
            bindNull();
    }

    static void read(const SQLite::Column& column, std::string& text) { text = column.getString(); }
    static void read(const SQLite::Column& column, std::string_view& text)
    {
        const auto* bytes = column.getText();
        text = {bytes, static_cast<std::size_t>(column.getBytes())};
    }
    static void read(const SQLite::Column& column, bool& flag) { flag = column.getInt() != 0; }
    static void read(const SQLite::Column& column, int& number) { number = column.getInt(); }
    static void read(const SQLite::Column& column, std::int64_t& number) { number = column.getInt64(); }
    static void read(const SQLite::Column& column, double& number) { number = column.getDouble(); }
    static void read(const SQLite::Column& column, Instant& at) { at = {column.getDouble()}; }
    static void read(const SQLite::Column& column, UUID& id);
    template <typename Kind> static void read(const SQLite::Column& column, Identifier<Kind>& id)
    {
        read(column, id.uuid);
    }
    template <typename T> static void read(const SQLite::Column& column, std::optional<T>& value)
    {
        if (!column.isNull())
            read(column, value.emplace());
    }

    SQLite::Statement& m_statement;
    int m_bound = 0;
    int m_column = 0;
};

/// One connection to a database, with its settings made and its statements kept prepared. One thread at a time.
/// Errors are thrown as SQLite::Exception.
class StoreConnection {
public:
    enum class Access {
        readWrite,
        /// No file is created or changed beside the database either, except shared memory that is there already.
        readOnly,
        /// The same, and the database's log is not looked at: for files that nobody writes.
        immutable,
    };

    /// `fileSystem` names a registered SQLite VFS; empty for the system's.
    StoreConnection(const std::filesystem::path& file, Access access, const std::string& fileSystem = {});
    static std::unique_ptr<StoreConnection> inMemory();

    /// `sql` is a literal: the prepared statement is kept under it.
    Query query(std::string_view sql);
    void execute(const std::string& sql) { m_database.exec(sql); }
    std::int64_t number(const std::string& sql);

    SQLite::Database& database() { return m_database; }
    sqlite3* handle() const { return m_database.getHandle(); }
    /// Whether the database cannot be written to through this connection.
    bool isReadOnly() const;

    /// Whether closing folds the log into the database, and every thousandth page of it.
    enum class Checkpoints { own, leave };
    void set(Checkpoints checkpoints);

    /// While it lives, what another connection keeps locked is not waited for.
    class Impatience {
    public:
        explicit Impatience(StoreConnection& connection);
        ~Impatience();
        Impatience(const Impatience&) = delete;
        Impatience& operator=(const Impatience&) = delete;

    private:
        StoreConnection& m_connection;
    };

private:
    explicit StoreConnection(const char* name);
    void configure();

    SQLite::Database m_database;
    std::unordered_map<std::string_view, SQLite::Statement> m_statements;
};

} // namespace stintbook
