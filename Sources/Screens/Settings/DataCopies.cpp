#include "Screens/Settings/DataCopies.h"

#include <QDir>
#include <QLocale>
#include <QStandardPaths>
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "App/ActivityDataExport.h"
#include "Screens/Models/Texts.h"
#include "Screens/Window/FilePanel.h"
#include "Store/ActivityDataDocument.h"
#include "Store/ActivityDataImport.h"
#include "Store/StoreInformation.h"

namespace stintbook {

namespace {

/// How many recorded segments the store holds; at least one.
double segmentCount(StoreDatabase& database)
{
    std::int64_t count = 1;
    if (const auto information = storeInformation(database)) {
        for (const auto& table : information->tables) {
            if (table.name == "ActivitySegment")
                count = std::max(count, table.recordCount);
        }
    }
    return static_cast<double>(count);
}

/// Tells of no more than each hundredth.
class Hundredths {
public:
    explicit Hundredths(std::function<void(double)> progress)
        : m_progress(std::move(progress))
    {
    }

    void tell(double done)
    {
        const auto hundredths = static_cast<int>(std::clamp(done, 0.0, 1.0) * 100);
        if (std::exchange(m_told, hundredths) != hundredths)
            m_progress(hundredths / 100.0);
    }

private:
    std::function<void(double)> m_progress;
    int m_told = -1;
};

} // namespace

DataCopies::DataCopies(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
{
}

DataCopies::~DataCopies()
{
    m_stop.request_stop();
}

StoreDesk& DataCopies::desk()
{
    if (!m_desk)
        m_desk = std::make_unique<StoreDesk>(m_context.variables, m_context.main);
    return *m_desk;
}

void DataCopies::chooseExport()
{
    const auto name = suggestedActivityDataFileName(m_context.clock.now(), m_context.calendar());
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    askWhereToSave(this,
                   {.title = tr("Export All Data"),
                    .suggestion = QDir(folder).filePath(text(name)),
                    .filter = tr("JSON documents (*.json)")},
                   [this](const QString& file) { exportTo(file); });
}

void DataCopies::chooseImport()
{
    askWhatToOpen(this,
                  {.title = tr("Import Data"),
                   .suggestion = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                   .filter = tr("JSON documents (*.json)")},
                  [this](const QString& file) { importFrom(file); });
}

void DataCopies::exportTo(const QString& file)
{
    begin(tr("Exporting all data…"));
    m_context.environment.saveWhatIsRecorded([guard = QPointer(this),
                                              file](const std::expected<void, std::string>& saved) {
        if (!guard)
            return;
        guard->write(file,
                     saved
                         ? QString()
                         : text(saved.error()) + u' ' + tr("What was not saved yet is missing in the copy."));
    });
}

void DataCopies::write(const QString& file, const QString& caution)
{
    desk().ask(
        this,
        [file, caution, now = m_context.clock.now(), stop = m_stop.get_token(),
         progress = shownProgress()](StoreDesk::Workplace& place) {
            auto& database = place.store.database();
            Hundredths shown(progress);
            const auto count = segmentCount(database);
            ActivityDataExportRequest request{
                .exportedAt = now,
                .sink = {},
                .cancellation = stop,
                .progress = [&](std::int64_t written) { shown.tell(static_cast<double>(written) / count); },
            };
            const auto written = exportActivityData(database, std::move(request), file.toStdString());
            if (!written)
                return Done{.outcome = {}, .problem = text(message(written.error()))};
            return Done{.outcome = tr("Everything was written to %1.").arg(QDir::toNativeSeparators(file)),
                        .problem = caution};
        },
        [this](const Done& done) { end(done); },
        [this](const std::string& problem) { end({.outcome = {}, .problem = text(problem)}); });
}

void DataCopies::importFrom(const QString& file)
{
    begin(tr("Importing…"));
    desk().ask(
        this,
        [file, stop = m_stop.get_token(), progress = shownProgress()](StoreDesk::Workplace& place) {
            std::ifstream document(file.toStdString(), std::ios::binary);
            if (!document)
                return Done{.outcome = {},
                            .problem =
                                tr("The file “%1” could not be read, so nothing was imported.").arg(file)};
            std::error_code unknown;
            const auto size = std::filesystem::file_size(file.toStdString(), unknown);
            Hundredths shown(progress);
            const auto imported =
                importActivityData(place.store.database(), document,
                                   {.cancellation = stop, .progress = [&](std::uint64_t read) {
                                        if (!unknown && size > 0)
                                            shown.tell(static_cast<double>(read) / static_cast<double>(size));
                                    }});
            if (!imported)
                return Done{.outcome = {}, .problem = text(message(imported.error()))};
            return Done{.outcome = tr("Imported: %1 recorded segments, %2 clients, %3 projects.")
                                       .arg(QLocale().toString(qlonglong(imported->at("segments"))),
                                            QLocale().toString(qlonglong(imported->at("clients"))),
                                            QLocale().toString(qlonglong(imported->at("projects")))),
                        .problem = {}};
        },
        [this](const Done& done) { end(done); },
        [this](const std::string& problem) { end({.outcome = {}, .problem = text(problem)}); });
}

/// Told on the desk's thread.
std::function<void(double)> DataCopies::shownProgress()
{
    return [&main = m_context.main, guard = QPointer(this)](double done) {
        main.post([guard, done] {
            if (!guard)
                return;
            guard->m_progress = done;
            Q_EMIT guard->changed();
        });
    };
}

void DataCopies::cancel()
{
    m_stop.request_stop();
    Q_EMIT changed();
}

void DataCopies::dismiss()
{
    m_outcome.clear();
    m_problem.clear();
    Q_EMIT changed();
}

void DataCopies::begin(const QString& activity)
{
    m_stop = {};
    m_isBusy = true;
    m_progress = 0;
    m_activity = activity;
    dismiss();
}

void DataCopies::end(const Done& done)
{
    m_isBusy = false;
    m_outcome = done.outcome;
    m_problem = done.problem;
    Q_EMIT changed();
}

} // namespace stintbook
