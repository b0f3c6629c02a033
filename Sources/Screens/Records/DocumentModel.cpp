#include "Screens/Records/DocumentModel.h"

#include <algorithm>
#include <utility>

#include "App/ExportDesk.h"
#include "Export/CSVDocument.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

constexpr int narrowestColumn = 6;
constexpr int widestColumn = 36;

void setTable(DocumentView& view, const CSVTable& table)
{
    for (const auto& key : table.keys)
        view.columns.push_back({text(key), static_cast<int>(key.size()), !table.rows.empty()});
    view.rows.reserve(table.rows.size());
    for (const auto& cells : table.rows) {
        auto& row = view.rows.emplace_back();
        row.id = static_cast<int>(view.rows.size());
        for (std::size_t at = 0; at < cells.size(); ++at) {
            row.cells.append(text(cells[at]));
            auto& column = view.columns[at];
            column.width = std::max(column.width, static_cast<int>(row.cells.back().size()));
            column.isNumber = column.isNumber && (cells[at].empty() || Decimal::parse(cells[at]));
        }
    }
    for (auto& column : view.columns)
        column.width = std::clamp(column.width, narrowestColumn, widestColumn);
}

} // namespace

std::expected<DocumentView, std::string> viewOf(const ExportDocumentModel& document,
                                                const ExportRegion& region, Instant generatedAt)
{
    DocumentView view;
    view.format = document.request.format;
    switch (view.format) {
    case ExportFormat::detailedCSV:
    case ExportFormat::summarizedCSV:
        setTable(view, csvTable(document));
        break;
    case ExportFormat::timesheetPDF: {
        auto layout = timesheetLayout(document, region, generatedAt);
        if (!layout)
            return std::unexpected(message(layout.error()));
        view.timesheet = std::make_shared<const HungTimesheet>(*std::move(layout), region);
        break;
    }
    case ExportFormat::copySummary: {
        const auto rendered = render(document, region, generatedAt);
        if (!rendered)
            return std::unexpected(message(rendered.error()));
        view.text = text(*rendered);
        break;
    }
    }
    return view;
}

DocumentModel::DocumentModel(std::shared_ptr<TimesheetGallery> gallery, QObject* parent)
    : QObject(parent)
    , m_gallery(std::move(gallery))
    , m_rows({RowModel<CellRow>::role("cells", &CellRow::cells)})
{
}

DocumentModel::~DocumentModel()
{
    m_gallery->takeDown(m_number);
}

QString DocumentModel::kind() const
{
    if (!m_view)
        return {};
    if (m_view->timesheet)
        return QStringLiteral("pages");
    return m_view->format == ExportFormat::copySummary ? QStringLiteral("text") : QStringLiteral("table");
}

QVariantList DocumentModel::columns() const
{
    QVariantList columns;
    if (m_view) {
        for (const auto& [key, width, isNumber] : m_view->columns)
            columns.append(QVariantMap{{"key", key}, {"width", width}, {"isNumber", isNumber}});
    }
    return columns;
}

int DocumentModel::pageCount() const
{
    return m_view && m_view->timesheet ? static_cast<int>(m_view->timesheet->layout.pages.size()) : 0;
}

double DocumentModel::pageShape() const
{
    const auto size =
        pageSize(m_view && m_view->timesheet ? m_view->timesheet->layout.paper : TimesheetPaper::a4);
    return size.height / size.width;
}

QString DocumentModel::pageSource(int page) const
{
    return QStringLiteral("image://timesheets/%1/%2").arg(m_number).arg(page);
}

void DocumentModel::show(DocumentView view)
{
    m_gallery->takeDown(m_number);
    m_view = std::move(view);
    m_number = m_view->timesheet ? m_gallery->hang(m_view->timesheet) : 0;
    m_rows.show(m_view->rows);
    Q_EMIT changed();
}

void DocumentModel::clear()
{
    m_gallery->takeDown(std::exchange(m_number, 0));
    m_view.reset();
    m_rows.show({});
    Q_EMIT changed();
}

} // namespace stintbook
