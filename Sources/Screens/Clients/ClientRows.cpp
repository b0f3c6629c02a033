#include "Screens/Clients/ClientRows.h"

#include <QLocale>
#include <QObject>
#include <QStringList>
#include <algorithm>
#include <tuple>

#include "Base/Text.h"
#include "Billing/AmountFormat.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

constexpr auto separator = "  ·  ";

QString counted(int count, const QString& one, const QString& many)
{
    return count == 1 ? one : many.arg(count);
}

QString referencesText(const ClientReferences& references)
{
    QStringList parts;
    const auto add = [&](int count, const QString& one, const QString& many) {
        if (count > 0)
            parts += counted(count, one, many);
    };
    add(references.reviewedItems, QObject::tr("1 reviewed item"), QObject::tr("%1 reviewed items"));
    add(references.corrections, QObject::tr("1 correction"), QObject::tr("%1 corrections"));
    add(references.rules, QObject::tr("1 rule"), QObject::tr("%1 rules"));
    add(references.exports, QObject::tr("1 export"), QObject::tr("%1 exports"));
    return QLocale().createSeparatedList(parts);
}

QString rateText(const std::optional<Decimal>& rate)
{
    return rate ? text(rate->text()) : QString();
}

/// Empty without a rate.
QString ratePerHour(const std::optional<Decimal>& rate, const BillingSettings& ledger)
{
    if (!rate)
        return {};
    const auto amount = ledger.currency
        ? text(AmountFormat(*ledger.currency, QLocale().name().toStdString()).rateText(*rate))
        : rateText(rate);
    return QObject::tr("%1 per hour").arg(amount);
}

QString rawText(std::optional<RoundingPolicy> policy)
{
    return policy ? text(rawValue(*policy)) : QString();
}

QString labelText(std::optional<RoundingPolicy> policy)
{
    return policy ? text(label(*policy)) : QString();
}

QString joined(QStringList parts)
{
    parts.removeAll(QString());
    return parts.join(QString::fromUtf8(separator));
}

bool contains(const std::string& name, const std::string& foldedWords)
{
    return foldedForSearch(name).find(foldedWords) != std::string::npos;
}

/// In use before archived, then by name.
auto listPlace(bool isArchived, const std::string& name, const UUID& id)
{
    return std::tuple(isArchived, foldedForSearch(name), id);
}

} // namespace

std::vector<ClientRow> clientRows(const std::vector<ListedClient>& clients,
                                  const std::vector<ListedProject>& projects, const BillingSettings& ledger,
                                  const QString& words)
{
    const auto wanted = foldedForSearch(words.trimmed().toStdString());
    auto sorted = clients;
    std::ranges::sort(sorted, {}, [](const ListedClient& listed) {
        return listPlace(listed.client.isArchived, listed.client.name, listed.client.id.uuid);
    });
    std::vector<ClientRow> rows;
    for (const auto& [client, references, billing] : sorted) {
        int projectCount = 0;
        bool isFound = contains(client.name, wanted);
        for (const auto& listed : projects) {
            if (listed.project.clientID != client.id)
                continue;
            projectCount += listed.project.isArchived ? 0 : 1;
            isFound = isFound || contains(listed.project.name, wanted);
        }
        if (!isFound)
            continue;
        const auto count = projectCount == 0
            ? QObject::tr("No projects")
            : counted(projectCount, QObject::tr("1 project"), QObject::tr("%1 projects"));
        rows.push_back({.id = client.id.uuid,
                        .name = text(client.name),
                        .color = client.color ? text(client.color->hex()) : QString(),
                        .rate = rateText(billing.hourlyRate),
                        .rounding = rawText(billing.rounding),
                        .summary = joined({count, ratePerHour(billing.hourlyRate, ledger)}),
                        .references = referencesText(references),
                        .isArchived = client.isArchived});
    }
    return rows;
}

std::vector<ProjectRow> projectRows(const ListedClient& client, const std::vector<ListedProject>& projects,
                                    const BillingSettings& ledger)
{
    std::vector<ListedProject> own;
    std::ranges::copy_if(projects, std::back_inserter(own), [&](const ListedProject& listed) {
        return listed.project.clientID == client.client.id;
    });
    std::ranges::sort(own, {}, [](const ListedProject& listed) {
        return listPlace(listed.project.isArchived, listed.project.name, listed.project.id.uuid);
    });
    std::vector<ProjectRow> rows;
    for (const auto& [project, references, billing] : own) {
        const auto billability = project.isArchived ? QObject::tr("Archived")
            : project.defaultBillable               ? QObject::tr("Billable")
                                                    : QObject::tr("Not billable");
        rows.push_back({.id = project.id.uuid,
                        .name = text(project.name),
                        .rate = rateText(billing.hourlyRate),
                        .rounding = rawText(billing.rounding),
                        .summary = joined({billability, ratePerHour(billing.hourlyRate, ledger),
                                           labelText(billing.rounding)}),
                        .references = referencesText(references),
                        .isBillable = project.defaultBillable,
                        .isArchived = project.isArchived});
    }
    return rows;
}

std::vector<RoundingRow> roundingRows(const QString& inherited)
{
    std::vector<RoundingRow> rows{{"", inherited}};
    for (const auto& [policy, raw] : RawValues<RoundingPolicy>::table)
        rows.push_back({std::string(raw), text(label(policy))});
    return rows;
}

} // namespace stintbook
