#pragma once

#include <QAbstractItemModel>
#include <QObject>

#include <QtQml/qqmlregistration.h>

#include "Screens/Models/RowModel.h"
#include "Screens/Window/Errands.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// A browser that is installed here.
struct BrowserRow {
    std::string id;
    QString name;
    QString state;
    bool isActive = false;

    friend bool operator==(const BrowserRow&, const BrowserRow&) = default;
};

/// What of the work is recorded beside the application.
class CaptureSettings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(bool recordsTitles READ recordsTitles NOTIFY changed)
    Q_PROPERTY(bool recordsDomains READ recordsDomains NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* browsers READ browsers CONSTANT)
    Q_PROPERTY(bool knowsBrowsers READ knowsBrowsers NOTIFY changed)
    Q_PROPERTY(QString accessibility READ accessibility NOTIFY changed)
    Q_PROPERTY(bool hasAccessibility READ hasAccessibility NOTIFY changed)
    Q_PROPERTY(bool canAskForAccessibility READ canAskForAccessibility NOTIFY changed)
    Q_PROPERTY(bool isAsking READ isAsking NOTIFY changed)

public:
    explicit CaptureSettings(const ScreenContext& context, QObject* parent = nullptr);

    bool recordsTitles() const;
    bool recordsDomains() const;
    QAbstractItemModel* browsers() { return &m_browsers; }
    /// Whether it was looked for them yet.
    bool knowsBrowsers() const { return m_knowsBrowsers; }
    QString accessibility() const;
    bool hasAccessibility() const;
    bool canAskForAccessibility() const;
    bool isAsking() const;

    Q_INVOKABLE void setRecordsTitles(bool records);
    Q_INVOKABLE void setRecordsDomains(bool records);
    /// Switches the session's accessibility on, as its user has agreed to by then.
    Q_INVOKABLE void askForAccessibility();
    /// Looks for browsers again.
    Q_INVOKABLE void refresh();
    void environmentChanged();

Q_SIGNALS:
    void changed();

private:
    QString domainsState() const;
    void showBrowsers();

    ScreenContext m_context;
    /// In the order in which they are listed.
    std::vector<std::string> m_installed;
    bool m_knowsBrowsers = false;
    RowModel<BrowserRow> m_browsers;
    Errands m_errands;
};

} // namespace stintbook
