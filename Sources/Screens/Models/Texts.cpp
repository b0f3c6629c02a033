#include "Screens/Models/Texts.h"

#include <QDateTime>
#include <QLocale>
#include <QObject>
#include <cmath>

namespace stintbook {

QString text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString text(const UUID& id)
{
    return text(id.upperCaseText());
}

QDate dateOf(CivilDate date)
{
    return {date.year, date.month, date.day};
}

QString shortDuration(Seconds length)
{
    const auto seconds = static_cast<qint64>(std::llround(length.value));
    if (seconds < 60)
        return QObject::tr("%1 s").arg(seconds);
    const auto minutes = (seconds + 30) / 60;
    if (minutes < 60)
        return QObject::tr("%1 min").arg(minutes);
    return minutes % 60 == 0 ? QObject::tr("%1 h").arg(minutes / 60)
                             : QObject::tr("%1 h %2 min").arg(minutes / 60).arg(minutes % 60);
}

QString shortDuration(const Decimal& seconds)
{
    return shortDuration(Seconds{seconds.approximate()});
}

QString timeOf(Instant at, const CalendarContext& calendar)
{
    const auto civil = calendar.civilTime(at);
    // The C locale writes seconds, which tell nothing here.
    const auto format = QLocale().timeFormat(QLocale::ShortFormat).remove(QStringLiteral(":ss"));
    return QLocale().toString(QTime(civil.hour, civil.minute), format);
}

QTime timeFrom(const QString& typed)
{
    auto time = QLocale().toTime(typed, QLocale::ShortFormat);
    for (const auto* format : {"H:mm", "H.mm", "Hmm", "H", "h:mm ap", "h ap"}) {
        if (!time.isValid())
            time = QLocale::c().toTime(typed, QString::fromLatin1(format));
    }
    return time;
}

QString timesOf(Interval interval, const CalendarContext& calendar)
{
    return timeOf(interval.start, calendar) + QStringLiteral(" – ") + timeOf(interval.end, calendar);
}

} // namespace stintbook
