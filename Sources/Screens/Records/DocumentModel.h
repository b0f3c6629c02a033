#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <expected>
#include <memory>
#include <string>
#include <vector>

#include <QtQml/qqmlregistration.h>

#include "Screens/Models/RowModel.h"
#include "Screens/Records/TimesheetGallery.h"

namespace stintbook {

/// A row of a table as it will be in the file.
struct CellRow {
    int id = 0;
    QStringList cells;

    friend bool operator==(const CellRow&, const CellRow&) = default;
};

/// An exported document as it is looked at: as a table, as pages or as a text.
struct DocumentView {
    struct Column {
        QString key;
        /// In characters.
        int width = 0;
        bool isNumber = false;
    };

    ExportFormat format = ExportFormat::summarizedCSV;
    std::vector<Column> columns;
    std::vector<CellRow> rows;
    QString text;
    std::shared_ptr<const HungTimesheet> timesheet;
};

/// What cannot be rendered is refused with a sentence.
std::expected<DocumentView, std::string> viewOf(const ExportDocumentModel& document,
                                                const ExportRegion& region, Instant generatedAt);

/// The document that is looked at.
class DocumentModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(QString kind READ kind NOTIFY changed)
    Q_PROPERTY(QVariantList columns READ columns NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT)
    Q_PROPERTY(QString text READ shownText NOTIFY changed)
    Q_PROPERTY(int pageCount READ pageCount NOTIFY changed)
    /// Of a page, height over width.
    Q_PROPERTY(double pageShape READ pageShape NOTIFY changed)

public:
    explicit DocumentModel(std::shared_ptr<TimesheetGallery> gallery, QObject* parent = nullptr);
    ~DocumentModel() override;
    DocumentModel(const DocumentModel&) = delete;
    DocumentModel& operator=(const DocumentModel&) = delete;

    /// "table", "pages" or "text"; empty when there is no document.
    QString kind() const;
    QVariantList columns() const;
    QAbstractItemModel* rows() { return &m_rows; }
    QString shownText() const { return m_view ? m_view->text : QString(); }
    int pageCount() const;
    double pageShape() const;
    Q_INVOKABLE QString pageSource(int page) const;

    void show(DocumentView view);
    void clear();

Q_SIGNALS:
    void changed();

private:
    std::shared_ptr<TimesheetGallery> m_gallery;
    std::optional<DocumentView> m_view;
    int m_number = 0;
    RowModel<CellRow> m_rows;
};

} // namespace stintbook
