// Whether the pieces of one record say the same.
#pragma once

#include "comtrade/record.h"

#include <QString>

namespace verify {

struct Wholeness;

/// Whether the configuration has the line ends of this converter. Another program that takes its record over
/// may copy the report and the INF file, and change what they are about.
bool HasConvertersLines(const QString& path);

/// Of a record that this converter wrote, which its fault report or its INF file shows, compares the two with
/// the configuration and with each other, and finds out whether they are whole. What is wrong is added to
/// result. Another record has nothing to be compared.
void CheckAgreement(const QString& path, const comtrade::Record& record, Wholeness& result);

} // namespace verify
