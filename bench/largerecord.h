// A large COMTRADE record: 64 analog and 128 discrete channels.
#pragma once

#include "comtrade/record.h"

namespace bench {

/// 200,000 samples; a tenth of them for a quick look.
int LargeRecordSamples(bool quick);

/// Writes base.cfg and base.dat with data of the type, ASCII or BINARY. Throws std::runtime_error.
void WriteLargeRecord(const QString& base, comtrade::DataType type, int samples);

} // namespace bench
