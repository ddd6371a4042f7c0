// Entries of a catalogue as a table for people.
#pragma once

#include "sql/database.h"

#include <QStringList>

#include <vector>

namespace archive {

/// A path as it is shown: from the current directory if it is below it; never like an option.
QString ShownPath(const QString& path);

/// What is wrong with a file, after its path as it is shown. The text may start with another path of it,
/// which is left out: `stored`, or an absolute one that ends so.
QString WrongLine(const QString& path, const QString& stored, const QString& text);

class FoundTable
{
public:
    /// A row of catalogue::FoundColumns; path is what is shown of the file.
    void Add(const sql::Row& row, const QString& path);

    size_t Count() const { return rows.size(); }

    /// A line of heads and one for each row. A table that is wider than so many letters loses columns and
    /// parts of names; 0: it may be as wide as it is.
    QStringList Lines(int width) const;

private:
    std::vector<QStringList> rows;
};

} // namespace archive
