// A finding about a file: its words for people and for programs.
#pragma once

#include "text/severity.h"

#include <QJsonObject>
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

namespace text {

/// "FILE:LINE:COLUMN", without what is not known.
QString PlaceText(const QString& file, qint64 line, int column);

/// "FILE:LINE:COLUMN: warning: TEXT", in the user's language.
QString FindingText(const FindingLine& finding);

/// An object with the keys file, line, column (only if there is one), severity, reason and text.
QJsonObject FindingObject(const FindingLine& finding);

} // namespace text
