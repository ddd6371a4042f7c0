// A good record of revision 1999 that can be spoilt, and what is read of it.
#pragma once

#include "comtrade/record.h"
#include "examples.h"

#include <QList>

/// The pieces of a record before they are files.
class UglyRecord
{
public:
    UglyRecord();

    /// Replaces a line of the configuration, counted from 1; more than one line if the text has line feeds.
    void Line(int number, const QByteArray& text);
    void Insert(int before, const QByteArray& text);
    void Remove(int number);
    void Data(const QByteArray& text) { data = text; }

    QByteArray ConfigurationText() const { return before + lines.join(lineEnd) + lineEnd + after; }
    const QByteArray& DataText() const { return data; }

    /// Writes the files, or the container if there is one, and returns the path of the first.
    QString Write(const TestDirectory& directory) const;

    QByteArray before;
    QByteArray after;
    QByteArray lineEnd = "\r\n";
    QByteArray encoding; ///< of the configuration; empty: UTF-8
    QString configurationName = "rec.cfg";
    QString dataName = "rec.dat";
    QByteArray container; ///< the bytes of a .cff instead

private:
    QList<QByteArray> lines;
    QByteArray data;
};

/// What is read: a line for the station, each channel, the rates, the times, the data type and each sample.
QString ReadAll(const QString& path, const comtrade::ReadingOptions& options = {});

/// What is read of the record that is not spoilt.
QString GoodReading();

/// The findings, each as "FILE:LINE:COLUMN severity reason", in the order of their places.
QStringList FindingsOf(const QString& path);
