#pragma once

#include <QDate>
#include <QString>
#include <QTime>
#include <string_view>

#include "Base/Decimal.h"
#include "Base/Identifier.h"
#include "Domain/CalendarContext.h"

/// What people are shown of the core's values, in the reader's language and locale.
namespace stintbook {

QString text(std::string_view utf8);
/// As QML hands it back.
QString text(const UUID& id);

QDate dateOf(CivilDate date);

/// "4 min"; whole minutes once there is one.
QString shortDuration(Seconds length);
QString shortDuration(const Decimal& seconds);
/// "08:35", or "8:35 AM".
QString timeOf(Instant at, const CalendarContext& calendar);
/// As people type it, "8:35", "0835" or "8 am"; null for anything else.
QTime timeFrom(const QString& typed);
/// "08:35 – 08:39".
QString timesOf(Interval interval, const CalendarContext& calendar);

} // namespace stintbook
