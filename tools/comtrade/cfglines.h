// The lines of a CFG text, one by one, and what is forgiven in them.
#pragma once

#include "comtrade/finding.h"
#include "comtrade/forgiving.h"
#include "comtrade/places.h"
#include "comtrade/record.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace comtrade {

/// The text of a configuration; what its bytes should not be is forgiven, or an Error.
QString CfgText(const QByteArray& bytes, const QString& encoding, const QString& fileName, qint64 firstLine,
                Findings* forgiven);

/// Hands out the lines that are not blank. Every failure names the file and the line.
class CfgLines
{
public:
    /// firstLine is the number of the text's first line in its file. Without forgiven_ nothing is forgiven.
    CfgLines(const QString& text, const QString& fileName_, Findings* forgiven_, qint64 firstLine);

    /// The next line. `what` is its name for people, here and below. Throws Error if there is none.
    Place Take(const QString& what);

    /// The same where an empty line has a meaning of its own: it is not passed over.
    Place TakeEvenIfEmpty(const QString& what);

    /// A line further on, without taking it: 0 is the next one. An empty place if there is none.
    Place Peek(int ahead = 0) const;

    /// How far ahead the first line is, from one of them on, whose first field is so; their number if none
    /// is.
    int Find(int from, const std::function<bool(const QString& field)>& isIt) const;

    bool AtEnd() const { return Left() == 0; }
    bool IsNextEmpty() const { return next < lines.size() && lines[next].isBlank; }
    qint64 Left() const { return left; } ///< lines that are not blank

    /// Adds a finding about a field of a line (-1: the whole line), or throws an Error if nothing is
    /// forgiven.
    void Forgive(const Place& place, int field, const Slip& slip);

    /// Adds a finding about something that no reader stumbles over, and which is no Error.
    void Remark(const Place& place, int field, const Slip& slip);

    [[noreturn]] void Fail(const Place& place, const QString& what) const;

    /// Removes empty fields at the end of a line that has more than `most`, as a comma at its end makes them.
    void DropTrailing(Place& place, int most);

    /// Fails unless the line has so many fields, or more of which the others are empty.
    void ExpectFields(Place& place, int fewest, int most, const QString& what);

    /// The number in a field.
    double Number(const Place& place, int field, const QString& what);
    qint64 Integer(const Place& place, int field, const QString& what);

    /// The same of a field that may be empty, which is read as `otherwise`.
    double NumberOr(double otherwise, const Place& place, int field, const QString& what);

    /// What follows the last line that was needed is a finding.
    void Close();

private:
    struct Line
    {
        qint64 number;
        QString text;
        bool isBlank;
    };

    void Split(QString text, qint64 firstLine);
    void TakeOffEnd(QString& text, qint64 firstLine);
    void TakeSemicolons();
    void PassBlanks();
    [[noreturn]] void NotANumber(const Place& place, int field, const QString& what) const;

    const QString fileName;
    Findings* const forgiven;
    std::vector<Line> lines;
    size_t next = 0;
    qint64 left = 0;      // lines from next on that are not blank
    qint64 lastTaken = 0; // number of the line
};

} // namespace comtrade
