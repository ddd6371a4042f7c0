// Columns of a piece: one value for each entry, as short as they can be written.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <vector>

namespace archivepage {

/// Values that are JSON already. As JSON they are an array, or one value where all are the same.
class Column
{
public:
    void Add(const QByteArray& value) { values.push_back(value); }
    void Add(qint64 value) { values.push_back(QByteArray::number(value)); }
    QByteArray Json() const;

private:
    std::vector<QByteArray> values;
};

/// Integers that rise, as JSON {"first": 5, "steps": [0, 2, ...]}: each from the one before.
class Rising
{
public:
    void Add(qint64 value);
    QByteArray Json() const;

private:
    bool isEmpty = true;
    qint64 first = 0;
    qint64 last = 0;
    Column steps;
};

/// Texts that repeat, as JSON {"words": ["", "A", ...], "of": [0, 1, ...]}.
class Words
{
public:
    /// Returns its place among the words.
    int Place(const QString& text);
    void Add(const QString& text) { of.Add(Place(text)); }
    QByteArray Json() const { return "{\"words\":" + WordsJson() + ",\"of\":" + of.Json() + "}"; }
    QByteArray WordsJson() const { return "[" + list + "]"; }

private:
    QHash<QString, int> places;
    QByteArray list;
    Column of;
};

} // namespace archivepage
