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
    edit(&LedgerSettings::m_currencyProblem, [typed](BillingDesk& desk) {
        return desk.setCurrency(typed.empty() ? std::nullopt : std::optional(typed));
    });
}

void LedgerSettings::setRounding(int place)
{
    const auto policy = RawValues<RoundingPolicy>::table.at(static_cast<std::size_t>(place)).first;
    edit(&LedgerSettings::m_roundingProblem,
         [policy](BillingDesk& desk) { return desk.setRounding(policy); });
}

void LedgerSettings::dismissProblem()
{
    m_roundingProblem.clear();
    m_readingProblem.clear();
    Q_EMIT changed();
}

void LedgerSettings::dismissCurrencyProblem()
{
    m_currencyProblem.clear();
    Q_EMIT changed();
}

void LedgerSettings::refresh()
{
    edit(nullptr, {});
}

/// Does the edit, where there is one, and reads what holds then. Reading alone leaves what was refused before.
void LedgerSettings::edit(Complaint complaint, std::function<Edited(BillingDesk&)> edit)
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
        [this, complaint](const Answer& answer) {
            m_readingProblem = answer.settings ? QString() : text(message(answer.settings.error()));
            if (answer.settings)
                m_settings = *answer.settings;
            if (complaint != nullptr)
                this->*complaint = answer.edited ? QString() : text(message(answer.edited.error()));
            Q_EMIT changed();
        },
        [this](const std::string& problem) {
            m_readingProblem = text(problem);
            Q_EMIT changed();
        });
}

} // namespace stintbook
