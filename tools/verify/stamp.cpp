#include "verify/stamp.h"

#include "recording/zufileformat.h"
#include "verify/source.h"

namespace verify {

namespace {

constexpr qint64 SecondsOfDay = 86400;

Moment MomentOf(quint32 seconds, int microseconds, int zoneSeconds)
{
    const qint64 local = qint64{seconds} + zoneSeconds;
    return {QDate(1970, 1, 1).addDays(local / SecondsOfDay), local % SecondsOfDay * 1000000 + microseconds};
}

} // namespace

Moment StartMoment(const Source& source)
{
    const ZuFileFormat& first = source.First();
    return MomentOf(first.Header.startTime, first.StartMicroseconds, first.TimeZoneSeconds);
}

Moment TriggerMoment(const Source& source)
{
    return TriggerMoment(source.First());
}

Moment TriggerMoment(const ZuFileFormat& first)
{
    return MomentOf(first.Header.trigTime, first.TrigMicroseconds, first.TimeZoneSeconds);
}

QString StampText(const Moment& moment)
{
    const qint64 seconds = moment.microseconds / 1000000;
    return moment.date.toString(QStringLiteral("dd/MM/yyyy,")) +
           QString::asprintf("%02d:%02d:%02d.%06d", static_cast<int>(seconds / 3600),
                             static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60),
                             static_cast<int>(moment.microseconds % 1000000));
}

} // namespace verify
