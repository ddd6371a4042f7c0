// The comparisons of a record's pieces with its recording. All throw Mismatch.
#pragma once

#include "comtrade/record.h"

#include <QByteArray>
#include <QString>

namespace verify {

class Source;

/// The configuration: its lines, field by field.
void CheckConfiguration(const QByteArray& configuration, const Source& source, const QString& fileName);

/// Every record of the data: number, time, all codes and all states, and that none is missing and none left
/// over. record must be before the first one.
void CheckData(comtrade::Record& record, const Source& source, const QString& fileName);

/// The fault report: its lines in order, those with texts of the recording and the ini file word for word,
/// those with calculated values by their form.
void CheckReport(const QByteArray& report, const Source& source, const QString& fileName);

/// The INF file: its sections in order and whole, and what it repeats of the configuration.
void CheckInformation(const QByteArray& information, const Source& source, const QString& fileName);

} // namespace verify
