#pragma once

#include <QObject>
#include <QStringList>
#include <memory>
#include <optional>

#include <QtQml/qqmlregistration.h>

#include "App/ExportDesk.h"
#include "Screens/Records/DocumentModel.h"
#include "Screens/Records/RecordsFilter.h"

namespace stintbook {

/// A column to have or to leave out.
struct FieldRow {
    QString id;
    QString name;
    bool isOn = false;

    friend bool operator==(const FieldRow&, const FieldRow&) = default;
};

/// A day that an export leaves out, and why.
struct BlockedDayRow {
    QString id;
    QString title;
    QString reason;

    friend bool operator==(const BlockedDayRow&, const BlockedDayRow&) = default;
};

/// An export from its choices to its delivery. Each change of a choice builds the document anew; what is delivered is
/// the document that is shown.
class ExportModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QString step READ step NOTIFY changed)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)
    Q_PROPERTY(bool isDelivering READ isDelivering NOTIFY changed)
    Q_PROPERTY(bool canDeliver READ canDeliver NOTIFY changed)
    Q_PROPERTY(stintbook::RecordsFilter* filter READ filter CONSTANT)
    Q_PROPERTY(QString mode READ mode WRITE setMode NOTIFY changed)
    Q_PROPERTY(QString kind READ kind WRITE setKind NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* fields READ fields CONSTANT)
    Q_PROPERTY(QStringList formatNotes READ formatNotes CONSTANT)
    Q_PROPERTY(QString neverExported READ neverExported CONSTANT)
    Q_PROPERTY(stintbook::DocumentModel* document READ document CONSTANT)
    Q_PROPERTY(QString figures READ figures NOTIFY changed)
    Q_PROPERTY(QString block READ block NOTIFY changed)
    Q_PROPERTY(QString blockedHeading READ blockedHeading NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* blockedDays READ blockedDays CONSTANT)
    Q_PROPERTY(QString unreviewed READ unreviewed NOTIFY changed)
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(QString resultTitle READ resultTitle NOTIFY changed)
    Q_PROPERTY(QString resultText READ resultText NOTIFY changed)
    Q_PROPERTY(QString deliveredFile READ deliveredFile NOTIFY changed)

public:
    ExportModel(const ScreenContext& context, std::shared_ptr<TimesheetGallery> gallery,
                QObject* parent = nullptr);

    /// "configure" until a document is shown, then "preview"; "complete" or "failed" after a delivery.
    QString step() const;
    /// What was chosen stays until it is known what came of it.
    bool isDelivering() const { return m_isDelivering; }
    /// While a document is built or delivered.
    bool isBusy() const { return m_isBuilding || m_isDelivering; }
    bool canDeliver() const;
    RecordsFilter* filter() { return &m_filter; }
    /// "detailed" or "summarized", which is remembered.
    QString mode() const { return text(rawValue(m_mode)); }
    void setMode(const QString& mode);
    /// "csv", "pdf" or "copySummary".
    QString kind() const;
    void setKind(const QString& kind);
    QAbstractItemModel* fields() { return &m_fields; }
    QStringList formatNotes() const;
    QString neverExported() const { return text(neverExportedNote); }
    DocumentModel* document() { return &m_document; }
    QString figures() const;
    /// Why there is nothing to export.
    QString block() const;
    QString blockedHeading() const;
    QAbstractItemModel* blockedDays() { return &m_blockedDays; }
    /// What was recorded on ready days since, and is left out.
    QString unreviewed() const;
    const QString& notice() const { return m_notice; }
    const QString& resultTitle() const { return m_resultTitle; }
    const QString& resultText() const { return m_resultText; }
    const QString& deliveredFile() const { return m_deliveredFile; }

    /// Begins with what Records looks at.
    Q_INVOKABLE void begin(stintbook::RecordsFilter* looked);
    Q_INVOKABLE void end();
    /// Remembered for the mode.
    Q_INVOKABLE void setField(const QString& token, bool isOn);
    /// Asks for a file where the format is one.
    Q_INVOKABLE void deliver();
    Q_INVOKABLE void backToPreview();
    Q_INVOKABLE void dismissNotice();
    Q_INVOKABLE void openFile() { openWithDesktop(m_deliveredFile); }
    Q_INVOKABLE void showInFolder();

Q_SIGNALS:
    void changed();
    void delivered();

private:
    /// A document with what is shown of it.
    struct Built {
        ExportPreview preview;
        DocumentView view;
    };

    ExportFormat format() const { return exportFormat(m_kind, m_mode); }
    void showFields();
    void build();
    void show(std::shared_ptr<const Built> built);
    void deliverBy(const ExportDesk::Delivery& delivery, const QString& file);
    void tell(const ExportReceipt& receipt, const QString& file);
    void tell(const ExportDeskProblem& problem);
    void forgetDocument();
    void refuse(const QString& notice);
    void openWithDesktop(const QString& path);

    ScreenContext m_context;
    ExportRegion m_region;
    RecordsFilter m_filter;
    ExportMode m_mode = ExportMode::summarized;
    ExportFormatKind m_kind = ExportFormatKind::pdf;
    ExportFieldSet m_chosenFields;
    bool m_isOpen = false;
    bool m_isBuilding = false;
    bool m_isDelivering = false;
    /// Of the choices; what was built for earlier ones is not shown.
    int m_revision = 0;
    ExportStep m_step = ExportConfiguring{};
    std::shared_ptr<const Built> m_built;
    QString m_notice;
    QString m_resultTitle;
    QString m_resultText;
    QString m_deliveredFile;

    RowModel<FieldRow> m_fields;
    RowModel<BlockedDayRow> m_blockedDays;
    DocumentModel m_document;
};

} // namespace stintbook
