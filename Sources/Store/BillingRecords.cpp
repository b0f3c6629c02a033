#include "Store/BillingRecords.h"

#include <string>

#include "Base/Try.h"
#include "Store/StoredFields.h"

namespace stintbook {

namespace {

constexpr std::string_view settingsKey = "billing-settings";
constexpr std::string_view roundingKey = "billing-rounding";

/// The value of a single record, absent when there is no record or it holds none.
std::optional<std::string> single(StoreConnection& connection, std::string_view sql, std::string_view key)
{
    auto row = connection.query(sql);
    if (!row.bind(key).next())
        return std::nullopt;
    return row.take<std::optional<std::string>>();
}

/// Terms of clients or projects, which are stored alike.
template <typename ID, typename Terms>
Stored<std::pair<ID, Terms>> readTerms(Query& row, std::string_view rateField, std::string_view roundingField)
{
    const auto id = row.take<ID>();
    const auto rate = row.take<std::optional<std::string>>();
    const auto rounding = row.take<std::optional<std::string>>();
    Terms terms;
    terms.hourlyRate = TRY(storedDecimal(id.uuid, rateField, rate));
    terms.rounding = TRY(storedCase<RoundingPolicy>(id.uuid, roundingField, rounding));
    return std::pair(id, terms);
}

template <typename ID, typename Terms>
Stored<std::map<ID, Terms>> byOwner(StoredRecords<std::pair<ID, Terms>> stored)
{
    const auto terms = TRY(stored.collect());
    return std::map<ID, Terms>(terms.begin(), terms.end());
}

} // namespace

Stored<BillingBook> readBilling(StoreConnection& connection)
{
    BillingBook book;
    book.settings = TRY(readSettings(connection));
    book.clients = TRY(byOwner(allClientBilling(connection)));
    book.projects = TRY(byOwner(allProjectBilling(connection)));
    return book;
}

Stored<BillingSettings> readSettings(StoreConnection& connection)
{
    BillingSettings settings;
    settings.currency = TRY(readCurrency(connection));
    settings.defaultRounding = TRY(readDefaultRounding(connection));
    return settings;
}

Stored<std::optional<BillingCurrency>> readCurrency(StoreConnection& connection)
{
    const auto code =
        single(connection, "SELECT currencyCode FROM BillingSettings WHERE key = ?1", settingsKey);
    if (!code)
        return std::nullopt;
    const auto currency = BillingCurrency::fromText(*code);
    if (!currency)
        return unreadable(UUID::random(), "billingSettings.currency");
    return currency;
}

Stored<std::optional<RoundingPolicy>> readDefaultRounding(StoreConnection& connection)
{
    return storedCase<RoundingPolicy>(
        UUID::random(), "billingSettings.rounding",
        single(connection, "SELECT roundingRaw FROM BillingRounding WHERE key = ?1", roundingKey));
}

StoredRecords<std::pair<ClientID, ClientBillingDefaults>> allClientBilling(StoreConnection& connection)
{
    return {connection, "SELECT clientID, hourlyRate, roundingRaw FROM ClientBilling ORDER BY clientID",
            [](StoreConnection&, Query& row) {
                return readTerms<ClientID, ClientBillingDefaults>(row, "clientBilling.hourlyRate",
                                                                  "clientBilling.rounding");
            }};
}

StoredRecords<std::pair<ProjectID, ProjectBillingOverrides>> allProjectBilling(StoreConnection& connection)
{
    return {connection, "SELECT projectID, hourlyRate, roundingRaw FROM ProjectBilling ORDER BY projectID",
            [](StoreConnection&, Query& row) {
                return readTerms<ProjectID, ProjectBillingOverrides>(row, "projectBilling.hourlyRate",
                                                                     "projectBilling.rounding");
            }};
}

void writeSettings(StoreConnection& connection, const BillingSettings& settings)
{
    connection
        .query("INSERT INTO BillingSettings (key, currencyCode) VALUES (?1, ?2)"
               " ON CONFLICT (key) DO UPDATE SET currencyCode = excluded.currencyCode")
        .bind(settingsKey, settings.currency ? std::optional(settings.currency->code()) : std::nullopt)
        .run();
    connection
        .query("INSERT INTO BillingRounding (key, roundingRaw) VALUES (?1, ?2)"
               " ON CONFLICT (key) DO UPDATE SET roundingRaw = excluded.roundingRaw")
        .bind(roundingKey, settings.defaultRounding)
        .run();
}

bool writeFirstCurrency(StoreConnection& connection, const BillingCurrency& currency)
{
    return connection
               .query("INSERT INTO BillingSettings (key, currencyCode) VALUES (?1, ?2)"
                      " ON CONFLICT (key) DO NOTHING")
               .bind(settingsKey, currency.code())
               .run()
        > 0;
}

void insertClientBilling(StoreConnection& connection, ClientID client, const ClientBillingDefaults& defaults)
{
    connection.query("INSERT INTO ClientBilling (clientID, hourlyRate, roundingRaw) VALUES (?1, ?2, ?3)")
        .bind(client, defaults.hourlyRate, defaults.rounding)
        .run();
}

void insertProjectBilling(StoreConnection& connection, ProjectID project,
                          const ProjectBillingOverrides& overrides)
{
    connection.query("INSERT INTO ProjectBilling (projectID, hourlyRate, roundingRaw) VALUES (?1, ?2, ?3)")
        .bind(project, overrides.hourlyRate, overrides.rounding)
        .run();
}

void writeClientBilling(StoreConnection& connection, ClientID client, const ClientBillingDefaults& defaults)
{
    connection.query("DELETE FROM ClientBilling WHERE clientID = ?1").bind(client).run();
    if (defaults != ClientBillingDefaults{})
        insertClientBilling(connection, client, defaults);
}

void writeProjectBilling(StoreConnection& connection, ProjectID project,
                         const ProjectBillingOverrides& overrides)
{
    connection.query("DELETE FROM ProjectBilling WHERE projectID = ?1").bind(project).run();
    if (overrides != ProjectBillingOverrides{})
        insertProjectBilling(connection, project, overrides);
}

} // namespace stintbook
