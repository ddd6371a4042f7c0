// What happened in a record, as files beside it: NAME.events.json and NAME.events.txt.
#pragma once

#include "analysis/summary.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The contents of the files, and the short form for reports.
struct EventTexts
{
    QByteArray json;
    QByteArray text;
    QString summary; ///< compact JSON: docs/json.md, key `summary`
};

/// Of the record that the question is about. `shown` is the path that the texts have for it. Throws
/// comtrade::Error.
EventTexts EventTextsOf(const analysis::Question& question, const QString& shown);

/// Names of the two files of a record.
QStringList EventFilesOf(const QString& recordName);

/// Which of them is at its name in the directory, and is no regular file; empty if none is.
QString ObstacleToEvents(const QString& directory, const QString& recordName);

/// Writes the two files. False on failure, with the reason in `error`.
bool WriteEventFiles(const QString& directory, const QString& recordName, const EventTexts& texts,
                     QString& error);
