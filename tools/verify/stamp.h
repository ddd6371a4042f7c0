// The two moments of a recording, in its own zone.
#pragma once

#include <QDate>
#include <QString>

class ZuFileFormat;

namespace verify {

class Source;

struct Moment
{
    QDate date;
    qint64 microseconds; // of the day
};

Moment StartMoment(const Source& source);   // the first sample
Moment TriggerMoment(const Source& source); // the start of the fault
Moment TriggerMoment(const ZuFileFormat& first);

/// As a record writes it: dd/MM/yyyy,hh:mm:ss.uuuuuu
QString StampText(const Moment& moment);

} // namespace verify
