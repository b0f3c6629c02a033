#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "App/ExportDesk.h"

namespace stintbook {

/// Puts the text on the desktop's clipboard, which belongs to the window's thread; for use on another one.
ExportDesk::Delivery clipboardDelivery();

/// Asks where to save, without making anything wait: `chosen` hears of the file, `cancelled` that there is none.
void askForFile(ExportFormat format, const QString& suggestedName, QObject* receiver,
                const std::function<void(const QString& path)>& chosen,
                const std::function<void()>& cancelled);

/// "timesheet 2026-11-01 – 2026-11-30 Nordlicht.pdf".
QString suggestedFileName(const ExportDocumentModel& document);

} // namespace stintbook
