#pragma once

#include <QString>
#include <functional>

class QFileDialog;
class QObject;

namespace stintbook {

/// What a panel of the desktop asks for. `filter` is as "JSON (*.json)".
struct FileQuestion {
    QString title;
    /// Whole path, or a folder.
    QString suggestion;
    QString filter;
};

/// Tells the receiver, as long as it lives, which file was chosen; nothing where none was.
void askWhereToSave(QObject* receiver, const FileQuestion& question,
                    std::function<void(const QString&)> chosen);
void askWhatToOpen(QObject* receiver, const FileQuestion& question,
                   std::function<void(const QString&)> chosen);

/// Deletes the panel when it was left, also while it was asking whether a file is to be replaced, as assistive
/// technology can.
void deleteWhenLeft(QFileDialog* panel);

} // namespace stintbook
