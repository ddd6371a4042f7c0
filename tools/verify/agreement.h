// Whether the pieces of one record say the same.
#pragma once

#include "comtrade/record.h"

#include <QString>

namespace verify {

struct Wholeness;

/// Of a record that this converter wrote, which its fault report or its INF file shows, compares the two with
/// the configuration and with each other, and finds out whether they are whole. What is wrong is added to
/// result. Another record has nothing to be compared.
void CheckAgreement(const QString& path, const comtrade::Record& record, Wholeness& result);

} // namespace verify
