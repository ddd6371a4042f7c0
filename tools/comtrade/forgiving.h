// What a part of the reader does about something that is not as it should be.
#pragma once

#include "comtrade/finding.h"
#include "comtrade/record.h"
#include "text/texts.h"

namespace comtrade {

/// What is wrong, and how it is read all the same.
struct Slip
{
    Severity severity;
    const char* reason; ///< a word of reasons.h
    QString what;       ///< the rule, and what is there
    QString reading;    ///< how it is read
};

/// Adds a finding about a place in a file, unless there is nothing to add it to.
inline void Remark(Findings* forgiven, const QString& file, qint64 line, int column, const Slip& slip)
{
    if (forgiven != nullptr)
        forgiven->Add({file, line, column, slip.severity, slip.reason,
                       Tr("comtrade", "%1; %2").arg(slip.what, slip.reading)});
}

/// The same; where nothing is forgiven, an Error.
inline void Forgive(Findings* forgiven, const QString& file, qint64 line, int column, const Slip& slip)
{
    if (forgiven == nullptr && line > 0)
        throw Error(Tr("comtrade", "%1, line %2: %3").arg(file, QString::number(line), slip.what));
    if (forgiven == nullptr)
        throw Error(Tr("comtrade", "%1: %2").arg(file, slip.what));
    Remark(forgiven, file, line, column, slip);
}

} // namespace comtrade
