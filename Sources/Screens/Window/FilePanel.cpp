#include "Screens/Window/FilePanel.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QWindow>
#include <utility>

namespace stintbook {

namespace {

void show(QObject* receiver, QFileDialog* dialog, const QString& suggestion,
          std::function<void(const QString&)> chosen)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
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

} // namespace stintbook
