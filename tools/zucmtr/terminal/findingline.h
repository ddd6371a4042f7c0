// What commands that examine files print: one line, or one JSON object, per finding.
#pragma once

#include "text/severity.h"

#include <QString>

struct FindingLine
{
    QString file;
    qint64 line = 0; ///< from 1; 0: of the whole file
    int column = 0;  ///< from 1; 0: of the whole line
    Severity severity = Severity::Note;
    const char* reason = nullptr; ///< a word of reasons.h
    QString text;
};

/// "FILE:LINE:COLUMN: warning: TEXT", or an object with the keys file, line, column (only if there is one),
/// severity, reason and text.
void PrintFinding(const FindingLine& finding, bool json);
