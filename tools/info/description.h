// What a recording or a COMTRADE record holds, ready to be shown to people and programs.
#pragma once

#include "comtrade/finding.h"
#include "text/reasons.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <vector>

namespace info {

/// One fact about the recording or record.
struct Fact
{
    QString key;   // for programs
    QString label; // for people; empty: the fact is for programs alone
    QJsonValue value;
    QString text;
};

/// A cell of a table, for programs and for people.
struct Cell
{
    QJsonValue value;
    QString text;
};

/// A list of like things: segments, channels.
struct Table
{
    QString key;         // of the list
    QString title;       // for people
    QStringList keys;    // of the columns
    QStringList headers; // for people
    std::vector<std::vector<Cell>> rows;
};

struct Description
{
    QString file;
    QString kind; // "recording" or "record"
    std::vector<Fact> facts;
    std::vector<Table> tables;
    QStringList notes;                       // what shortens or spoils it, and what to do
    QString encoding;                        // of a record's texts; empty: found out
    std::vector<comtrade::Finding> forgiven; // what is not as it should be in a record, and was read
    QString error;                           // why nothing more can be said; the facts are those found before
    const char* reason = reason::Unexpected; // of the error

    void Add(const char* key, const QString& label, const QString& text);
    void Add(const char* key, const QString& label, const QJsonValue& value, const QString& text);
    void Add(const char* key, const QString& label, const Cell& cell);
    void AddForPrograms(const char* key, const QJsonValue& value);

    /// Sets the error. word is one of those in reasons.h.
    void Fail(const char* word, const QString& text);
};

/// Describes a recording by its first file, with the whole chain, or a record by its .cfg or .cff file. Never
/// throws for bad input: the error says what is wrong, where, and what to do.
/// encoding is that of a record's texts; empty: it is found out.
Description Describe(const QString& path, const QString& encoding = QString());

/// Fill in what is in the file of the description.
void DescribeRecording(Description& description);
void DescribeRecord(Description& description);

/// Lines for people; the lists of channels are included only if asked for.
QStringList LinesOf(const Description& description, bool channels);

/// One object for programs; docs/json.md lists the keys.
QJsonObject JsonOf(const Description& description, bool channels);

} // namespace info
