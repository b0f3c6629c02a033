#pragma once

#include <QQuickImageProvider>
#include <map>
#include <memory>
#include <mutex>

#include "Export/Timesheet/TimesheetPicture.h"

namespace stintbook {

/// A timesheet that is shown: its pages, and the region that they are drawn for.
struct HungTimesheet {
    TimesheetLayout layout;
    ExportRegion region;
};

/// The timesheets that are shown at present, by a number each. Touched by the window and by whoever draws.
class TimesheetGallery {
public:
    int hang(std::shared_ptr<const HungTimesheet> timesheet);
    void takeDown(int number);
    /// Null when it hangs there no more.
    std::shared_ptr<const HungTimesheet> find(int number) const;

private:
    mutable std::mutex m_mutex;
    std::map<int, std::shared_ptr<const HungTimesheet>> m_timesheets;
    int m_last = 0;
};

/// Draws pages for image://timesheets/NUMBER/PAGE, never on the window's thread.
class TimesheetProvider final : public QQuickImageProvider {
public:
    explicit TimesheetProvider(std::shared_ptr<const TimesheetGallery> gallery);

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    std::shared_ptr<const TimesheetGallery> m_gallery;
};

} // namespace stintbook
