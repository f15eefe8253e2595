#pragma once

#include <QTimeZone>
#include <QtGlobal>

namespace zarvy {

// What the constructors of QDateTime and their relatives take for UTC: newer releases of Qt take
// everywhere a time zone, older ones know no light one.
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
inline constexpr QTimeZone::Initialization utcZone = QTimeZone::UTC;
#else
inline constexpr Qt::TimeSpec utcZone = Qt::UTC;
#endif

}  // namespace zarvy
