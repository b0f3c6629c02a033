#include "Screens/Records/Delivering.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QPointer>
#include <QStandardPaths>
#include <QWindow>
#include <chrono>
#include <future>
#include <memory>

#include "Screens/Models/Texts.h"
#include "Screens/Records/RecordsRows.h"
#include "Screens/Window/FilePanel.h"

namespace stintbook {

namespace {

/// The window answers at once, or it is going.
constexpr std::chrono::seconds longestWait{3};

bool placeOnClipboard(const QString& words)
{
    auto* const clipboard = QGuiApplication::clipboard();
    clipboard->setText(words);
    return clipboard->text() == words;
}

} // namespace

ExportDesk::Delivery clipboardDelivery()
{
    return [](const std::string& bytes) -> std::expected<void, std::string> {
        // Kept here alone: a job that comes too late finds nobody who waits, and leaves the clipboard as it is.
        const auto placed = std::make_shared<std::promise<bool>>();
        QMetaObject::invokeMethod(
            qApp,
            [waiting = std::weak_ptr(placed), words = text(bytes)] {
                if (const auto answer = waiting.lock())
                    answer->set_value(placeOnClipboard(words));
            },
            Qt::QueuedConnection);
        auto answer = placed->get_future();
        if (answer.wait_for(longestWait) != std::future_status::ready || !answer.get())
            return std::unexpected(message(ExportTextProblem::pasteboardRefused));
        return {};
    };
}

void askForFile(ExportFormat format, const QString& suggestedName, QObject* receiver,
                const std::function<void(const QString& path)>& chosen,
                const std::function<void()>& cancelled)
{
    static QString lastDirectory = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const bool isPDF = format == ExportFormat::timesheetPDF;
    auto* const dialog = new QFileDialog;
    deleteWhenLeft(dialog);
    dialog->setWindowTitle(QObject::tr("Save Export"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setDefaultSuffix(isPDF ? QStringLiteral("pdf") : QStringLiteral("csv"));
    dialog->setNameFilter(isPDF ? QObject::tr("Timesheets (*.pdf)") : QObject::tr("Tables (*.csv)"));
    dialog->setDirectory(lastDirectory);
    dialog->selectFile(suggestedName);
    QObject::connect(dialog, &QFileDialog::fileSelected, receiver, [chosen](const QString& path) {
        lastDirectory = QFileInfo(path).absolutePath();
        chosen(path);
    });
    QObject::connect(dialog, &QFileDialog::rejected, receiver, cancelled);
    auto* const window = QGuiApplication::focusWindow();
    dialog->setWindowModality(Qt::ApplicationModal);
    dialog->open();
    if (window != nullptr && dialog->windowHandle() != nullptr)
        dialog->windowHandle()->setTransientParent(window);
}

QString suggestedFileName(const ExportDocumentModel& document)
{
    const auto& request = document.request;
    const auto first = dateOf(request.rangeStart).toString(Qt::ISODate);
    const auto last = dateOf(request.rangeEnd).toString(Qt::ISODate);
    auto name = QObject::tr("Timesheet") + QLatin1Char(' ') + first;
    if (last != first)
        name += QStringLiteral(" – ") + last;
    for (const auto& whose : {document.clientFilterName, document.projectFilterName}) {
        if (whose)
            name += QLatin1Char(' ') + text(*whose);
    }
    // A name is no path.
    name.replace(QLatin1Char('/'), QLatin1Char('-'));
    return name
        + (request.format == ExportFormat::timesheetPDF ? QStringLiteral(".pdf") : QStringLiteral(".csv"));
}

} // namespace stintbook
