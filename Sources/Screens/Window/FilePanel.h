#pragma once

#include <QString>
#include <functional>

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

} // namespace stintbook
