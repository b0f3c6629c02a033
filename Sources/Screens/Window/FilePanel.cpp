#include "Screens/Window/FilePanel.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QTimer>
#include <QWindow>
#include <utility>

namespace stintbook {

namespace {

/// That question stands on the panel's stack, and has to be answered before the panel may go.
void discard(QFileDialog* panel)
{
    auto* const question = panel->findChild<QMessageBox*>();
    if (question == nullptr)
        return panel->deleteLater();
    question->reject();
    QTimer::singleShot(0, panel, [panel] { discard(panel); });
}

void show(QObject* receiver, QFileDialog* dialog, const QString& suggestion,
          std::function<void(const QString&)> chosen)
{
    deleteWhenLeft(dialog);
    const QFileInfo place(suggestion);
    if (place.isDir()) {
        dialog->setDirectory(suggestion);
    } else {
        dialog->setDirectory(place.path());
        dialog->selectFile(place.fileName());
    }
    QObject::connect(dialog, &QFileDialog::fileSelected, receiver, std::move(chosen));
    auto* const parent = QGuiApplication::focusWindow();
    dialog->winId();
    dialog->windowHandle()->setTransientParent(parent);
    dialog->open();
}

} // namespace

void askWhereToSave(QObject* receiver, const FileQuestion& question,
                    std::function<void(const QString&)> chosen)
{
    auto* const dialog = new QFileDialog(nullptr, question.title, {}, question.filter);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    show(receiver, dialog, question.suggestion, std::move(chosen));
}

void askWhatToOpen(QObject* receiver, const FileQuestion& question,
                   std::function<void(const QString&)> chosen)
{
    auto* const dialog = new QFileDialog(nullptr, question.title, {}, question.filter);
    dialog->setFileMode(QFileDialog::ExistingFile);
    show(receiver, dialog, question.suggestion, std::move(chosen));
}

void deleteWhenLeft(QFileDialog* panel)
{
    QObject::connect(panel, &QDialog::finished, panel, [panel] { discard(panel); });
}

} // namespace stintbook
