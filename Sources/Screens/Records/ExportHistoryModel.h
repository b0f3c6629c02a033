#pragma once

#include <QObject>
#include <QVariantMap>
#include <memory>
#include <optional>

#include <QtQml/qqmlregistration.h>

#include "App/ExportDesk.h"
#include "Screens/Records/DocumentModel.h"
#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// A delivered export.
struct ExportRow {
    QString id;
    QString when;
    QString format;
    QString period;
    QString whose;
    QString days;
    QString billed;
    QString amount;
    int changedCount = 0;

    friend bool operator==(const ExportRow&, const ExportRow&) = default;
};

/// A day whose work is not what was exported.
struct ChangedDayRow {
    QString id;
    QString title;

    friend bool operator==(const ChangedDayRow&, const ChangedDayRow&) = default;
};

/// What was exported, the latest first, and what changed since. One of them is looked at, as the document it was.
class ExportHistoryModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    Q_PROPERTY(bool isKnown READ isKnown NOTIFY changed)
    Q_PROPERTY(QString selected READ selected NOTIFY selectionChanged)
    Q_PROPERTY(QVariantMap detail READ detail NOTIFY selectionChanged)
    Q_PROPERTY(QAbstractItemModel* changedDays READ changedDays CONSTANT)
    Q_PROPERTY(stintbook::DocumentModel* document READ document CONSTANT)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    Q_PROPERTY(QString notice READ notice NOTIFY changed)

public:
    ExportHistoryModel(const ScreenContext& context, std::shared_ptr<TimesheetGallery> gallery,
                       QObject* parent = nullptr);

    QAbstractItemModel* rows() { return &m_rows; }
    bool isKnown() const { return m_isKnown; }
    const QString& selected() const { return m_selected; }
    QVariantMap detail() const;
    QAbstractItemModel* changedDays() { return &m_changedDays; }
    DocumentModel* document() { return &m_document; }
    const QString& problem() const { return m_problem; }
    /// What came of delivering it again.
    const QString& notice() const { return m_notice; }

    Q_INVOKABLE void select(const QString& id);
    Q_INVOKABLE void step(int rows);
    /// Builds the document that the selected export was.
    Q_INVOKABLE void openDocument();
    Q_INVOKABLE void closeDocument();
    /// To a file that is asked for, or to the clipboard, as it was delivered first. Records nothing.
    Q_INVOKABLE void deliverAgain();
    Q_INVOKABLE void dismissNotice() { setNotice({}); }

    Q_INVOKABLE void dismissProblem() { setProblem({}); }
    /// Reads only while it is looked at.
    Q_INVOKABLE void setVisible(bool isVisible);
    void refresh();

Q_SIGNALS:
    void changed();
    void selectionChanged();

private:
    struct Listed {
        ExportRow row;
        std::vector<ChangedDayRow> changedDays;
    };

    int rowOf(const QString& id) const;
    void showSelected();
    void deliverBy(const ExportDesk::Delivery& delivery, const QString& done);
    void setProblem(const QString& problem);
    void setNotice(const QString& notice);
    void tell(int request, const QString& problem);

    ScreenContext m_context;
    ExportRegion m_region;
    std::vector<Listed> m_listed;
    std::optional<ExportSnapshot> m_opened;
    QString m_selected;
    QString m_problem;
    QString m_notice;
    bool m_isKnown = false;
    bool m_isVisible = false;
    bool m_isOutdated = true;
    /// Of the document that is open; what comes of an earlier one is not shown in it.
    int m_request = 0;

    RowModel<ExportRow> m_rows;
    RowModel<ChangedDayRow> m_changedDays;
    DocumentModel m_document;
};

} // namespace stintbook
