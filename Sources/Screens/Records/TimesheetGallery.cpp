#include "Screens/Records/TimesheetGallery.h"

#include <algorithm>
#include <cstring>

namespace stintbook {

int TimesheetGallery::hang(std::shared_ptr<const HungTimesheet> timesheet)
{
    const std::lock_guard lock(m_mutex);
    m_timesheets.emplace(++m_last, std::move(timesheet));
    return m_last;
}

void TimesheetGallery::takeDown(int number)
{
    const std::lock_guard lock(m_mutex);
    m_timesheets.erase(number);
}

std::shared_ptr<const HungTimesheet> TimesheetGallery::find(int number) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_timesheets.find(number);
    return found == m_timesheets.end() ? nullptr : found->second;
}

TimesheetProvider::TimesheetProvider(std::shared_ptr<const TimesheetGallery> gallery)
    : QQuickImageProvider(QQmlImageProviderBase::Image, QQmlImageProviderBase::ForceAsynchronousImageLoading)
    , m_gallery(std::move(gallery))
{
}

QImage TimesheetProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize)
{
    const auto timesheet = m_gallery->find(id.section(QLatin1Char('/'), 0, 0).toInt());
    const auto page = id.section(QLatin1Char('/'), 1, 1).toULongLong();
    if (!timesheet || page >= timesheet->layout.pages.size())
        return {};
    constexpr int narrowest = 64;
    const auto picture = timesheetPicture(timesheet->layout.pages[page], timesheet->region,
                                          std::max(requestedSize.width(), narrowest));
    if (!picture)
        return {};
    QImage image(picture->width, picture->height, QImage::Format_RGB32);
    const auto rowLength = static_cast<std::size_t>(picture->width);
    for (int row = 0; row < picture->height; ++row)
        std::memcpy(image.scanLine(row), picture->pixels.data() + static_cast<std::size_t>(row) * rowLength,
                    rowLength * sizeof(std::uint32_t));
    *size = image.size();
    return image;
}

} // namespace stintbook
