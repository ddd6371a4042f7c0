// ASCII records of any form that a reader understands; plainline.h reads most of them faster.
#pragma once

#include "comtrade/plainline.h"
#include "comtrade/record.h"

namespace comtrade {

/// The code that stands for a missing value in ASCII data of the revision, as an empty field does.
qint32 MissingCode(Revision revision);

/// Reads the line, without what ends it. Throws text::Error with what is wrong; the caller says where.
void ReadLine(const char* line, const char* end, const Configuration& configuration, const Target& target);

} // namespace comtrade
