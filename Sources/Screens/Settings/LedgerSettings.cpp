#include "Screens/Settings/LedgerSettings.h"

#include <QLocale>
#include <utility>

#include "Base/Text.h"

namespace stintbook {

LedgerSettings::LedgerSettings(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
    , m_roundings({RowModel<LedgerRoundingRow>::role("choiceID", &LedgerRoundingRow::id),
                   RowModel<LedgerRoundingRow>::role("name", &LedgerRoundingRow::name)})
{
    std::vector<LedgerRoundingRow> rows;
    for (const auto& [policy, name] : RawValues<RoundingPolicy>::table)
        rows.push_back({std::string(name), std::string(label(policy))});
    m_roundings.show(std::move(rows));
}

QString LedgerSettings::currency() const
{
    return m_settings.currency ? text(m_settings.currency->code()) : QString();
}

QString LedgerSettings::currencyName() const
{
    return m_settings.currency ? text(m_settings.currency->name(QLocale().name().toStdString())) : QString();
}

int LedgerSettings::rounding() const
{
    if (!m_settings.defaultRounding)
        return -1;
    const auto& table = RawValues<RoundingPolicy>::table;
    const auto* place = std::ranges::find(table, *m_settings.defaultRounding,
                                          &std::pair<RoundingPolicy, std::string_view>::first);
    return static_cast<int>(place - table.begin());
}

void LedgerSettings::setCurrency(const QString& code)
{
    const auto typed = trimmed(code.toStdString());
    edit([typed](BillingDesk& desk) {
        return desk.setCurrency(typed.empty() ? std::nullopt : std::optional(typed));
    });
}

void LedgerSettings::setRounding(int place)
{
    const auto policy = RawValues<RoundingPolicy>::table.at(static_cast<std::size_t>(place)).first;
    edit([policy](BillingDesk& desk) { return desk.setRounding(policy); });
}

void LedgerSettings::dismissProblem()
{
    m_problem.clear();
    Q_EMIT changed();
}

void LedgerSettings::refresh()
{
    edit({});
}

/// Does the edit, where there is one, and reads what holds then.
void LedgerSettings::edit(std::function<Edited(BillingDesk&)> edit)
{
    struct Answer {
        Edited edited;
        Stored<BillingSettings> settings;
    };
    m_context.desk.ask(
        this,
        [edit = std::move(edit)](StoreDesk::Workplace& place) {
            BillingDesk desk(place.store);
            auto edited = edit ? edit(desk) : Edited();
            return Answer{.edited = std::move(edited), .settings = desk.settings()};
        },
        [this](const Answer& answer) {
            m_currencyProblem.clear();
            m_problem.clear();
            if (answer.settings)
                m_settings = *answer.settings;
            else
                m_problem = text(message(answer.settings.error()));
            if (!answer.edited) {
                const bool isCurrency = std::holds_alternative<CurrencyRefused>(answer.edited.error());
                (isCurrency ? m_currencyProblem : m_problem) = text(message(answer.edited.error()));
            }
            Q_EMIT changed();
        },
        [this](const std::string& problem) {
            m_problem = text(problem);
            Q_EMIT changed();
        });
}

} // namespace stintbook
