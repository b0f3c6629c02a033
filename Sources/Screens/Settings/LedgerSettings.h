#pragma once

#include <QAbstractItemModel>
#include <QObject>
#include <functional>
#include <string>

#include <QtQml/qqmlregistration.h>

#include "App/BillingDesk.h"
#include "Screens/Models/RowModel.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// A rounding to choose, by its stored name.
struct LedgerRoundingRow {
    std::string id;
    std::string name;

    friend bool operator==(const LedgerRoundingRow&, const LedgerRoundingRow&) = default;
};

/// What the whole ledger bills by.
class LedgerSettings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QString currency READ currency NOTIFY changed)
    Q_PROPERTY(QString currencyName READ currencyName NOTIFY changed)
    Q_PROPERTY(QString currencyProblem READ currencyProblem NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* roundings READ roundings CONSTANT)
    Q_PROPERTY(int rounding READ rounding NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)

public:
    explicit LedgerSettings(const ScreenContext& context, QObject* parent = nullptr);

    /// "EUR"; empty where there is none.
    QString currency() const;
    /// In the reader's language.
    QString currencyName() const;
    const QString& currencyProblem() const { return m_currencyProblem; }
    QAbstractItemModel* roundings() { return &m_roundings; }
    /// Its place among the roundings; -1 where none was chosen.
    int rounding() const;
    /// Of the rounding, else of reading.
    const QString& problem() const
    {
        return m_roundingProblem.isEmpty() ? m_readingProblem : m_roundingProblem;
    }

    /// Blank: none.
    Q_INVOKABLE void setCurrency(const QString& code);
    Q_INVOKABLE void setRounding(int place);
    Q_INVOKABLE void dismissProblem();
    Q_INVOKABLE void dismissCurrencyProblem();
    void refresh();

Q_SIGNALS:
    void changed();

private:
    using Edited = std::expected<void, BillingProblem>;
    /// Where the sentence stands when the edit is refused.
    using Complaint = QString LedgerSettings::*;
    void edit(Complaint complaint, std::function<Edited(BillingDesk&)> edit);

    ScreenContext m_context;
    BillingSettings m_settings;
    QString m_currencyProblem;
    QString m_roundingProblem;
    QString m_readingProblem;
    RowModel<LedgerRoundingRow> m_roundings;
};

} // namespace stintbook
