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

Stored<BillingSettings> readSettings(StoreConnection& connection)
{
    BillingSettings settings;
    const auto code =
        single(connection, "SELECT currencyCode FROM BillingSettings WHERE key = ?1", settingsKey);
    if (code) {
        settings.currency = BillingCurrency::fromText(*code);
        if (!settings.currency)
            return unreadable(UUID::random(), "billingSettings.currency");
    }
    settings.defaultRounding = TRY(storedCase<RoundingPolicy>(
        UUID::random(), "billingSettings.rounding",
        single(connection, "SELECT roundingRaw FROM BillingRounding WHERE key = ?1", roundingKey)));
    return settings;
}

/// Terms of clients or projects, which are stored alike.
template <typename ID, typename Terms>
Stored<std::map<ID, Terms>> readTerms(StoreConnection& connection, std::string_view sql,
                                      std::string_view rateField, std::string_view roundingField)
{
    auto rows = connection.query(sql);
    std::map<ID, Terms> terms;
    while (rows.next()) {
        const auto id = rows.take<ID>();
        const auto rate = rows.take<std::optional<std::string>>();
        const auto rounding = rows.take<std::optional<std::string>>();
        terms[id] = Terms{TRY(storedDecimal(id.uuid, rateField, rate)),
                          TRY(storedCase<RoundingPolicy>(id.uuid, roundingField, rounding))};
    }
    return terms;
}

} // namespace

Stored<BillingBook> readBilling(StoreConnection& connection)
{
    BillingBook book;
    book.settings = TRY(readSettings(connection));
    book.clients = TRY((readTerms<ClientID, ClientBillingDefaults>(
        connection, "SELECT clientID, hourlyRate, roundingRaw FROM ClientBilling", "clientBilling.hourlyRate",
        "clientBilling.rounding")));
    book.projects = TRY((readTerms<ProjectID, ProjectBillingOverrides>(
        connection, "SELECT projectID, hourlyRate, roundingRaw FROM ProjectBilling",
        "projectBilling.hourlyRate", "projectBilling.rounding")));
    return book;
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

void writeClientBilling(StoreConnection& connection, ClientID client, const ClientBillingDefaults& defaults)
{
    connection.query("DELETE FROM ClientBilling WHERE clientID = ?1").bind(client).run();
    if (defaults != ClientBillingDefaults{})
        connection.query("INSERT INTO ClientBilling (clientID, hourlyRate, roundingRaw) VALUES (?1, ?2, ?3)")
            .bind(client, defaults.hourlyRate, defaults.rounding)
            .run();
}

void writeProjectBilling(StoreConnection& connection, ProjectID project,
                         const ProjectBillingOverrides& overrides)
{
    connection.query("DELETE FROM ProjectBilling WHERE projectID = ?1").bind(project).run();
    if (overrides != ProjectBillingOverrides{})
        connection
            .query("INSERT INTO ProjectBilling (projectID, hourlyRate, roundingRaw) VALUES (?1, ?2, ?3)")
            .bind(project, overrides.hourlyRate, overrides.rounding)
            .run();
}

} // namespace stintbook
