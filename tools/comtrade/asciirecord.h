// ASCII records of any form that a reader understands; plainline.h reads most of them faster.
#pragma once

#include "comtrade/plainline.h"
#include "comtrade/record.h"

namespace comtrade {

/// The code that stands for a missing value in ASCII data of the revision, as an empty field does.
qint32 MissingCode(Revision revision);

/// Which record a line is, and where to say what was forgiven.
struct LinePlace
{
    const QString& file;
    qint64 record;      ///< from 1
    Findings* forgiven; ///< null: nothing is
};

/// Reads the line, without what ends it. Throws Error with what is wrong; the caller says where.
void ReadLine(const char* line, const char* end, const Configuration& configuration, const LinePlace& place,
              const Target& target);

} // namespace comtrade
