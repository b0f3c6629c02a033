#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "App/ClientBook.h"
#include "Billing/BillingSettings.h"

namespace stintbook {

/// A client, as the list and the inspector show it.
struct ClientRow {
    UUID id;
    QString name;
    /// "#1A2B3C"; empty without one.
    QString color;
    /// As it is typed; empty without one.
    QString rate;
    /// By its stored name; empty where the ledger's default applies.
    QString rounding;
    /// "3 projects  ·  €120.00 per hour".
    QString summary;
    /// What is recorded under it, in words; empty when nothing is.
    QString references;
    bool isArchived = false;

    friend bool operator==(const ClientRow&, const ClientRow&) = default;
};

struct ProjectRow {
    UUID id;
    QString name;
    /// Empty: the client's.
    QString rate;
    QString rounding;
    QString summary;
    QString references;
    bool isBillable = true;
    bool isArchived = false;

    friend bool operator==(const ProjectRow&, const ProjectRow&) = default;
};

/// A rounding policy to choose by its stored name, or "" for what is inherited.
struct RoundingRow {
    std::string id;
    QString name;

    friend bool operator==(const RoundingRow&, const RoundingRow&) = default;
};

/// Those that are in use first, then the archived ones; each by name. Only those whose name, or a project's name,
/// contains the words.
std::vector<ClientRow> clientRows(const std::vector<ListedClient>& clients,
                                  const std::vector<ListedProject>& projects, const BillingSettings& ledger,
                                  const QString& words);
std::vector<ProjectRow> projectRows(const ListedClient& client, const std::vector<ListedProject>& projects,
                                    const BillingSettings& ledger);
/// The policies below the one that is inherited.
std::vector<RoundingRow> roundingRows(const QString& inherited);

} // namespace stintbook
