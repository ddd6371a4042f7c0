// Where the parts of a CFG text are, for those who report on them.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace comtrade {

/// A line of a CFG text.
struct Place
{
    qint64 line = 0; ///< of the file, from 1, also for a section of a container; 0: there is no such line
    QString text;
    QStringList fields;       ///< as written, without the blanks around them
    std::vector<int> columns; ///< of the fields' first characters, from 1

    /// The column of a field, counted from 0; 0 if there is no such field.
    int ColumnOf(int field) const
    {
        return field >= 0 && static_cast<size_t>(field) < columns.size() ? columns[static_cast<size_t>(field)]
                                                                         : 0;
    }

    /// What is written from one field to another, with the commas between them.
    QString TextOf(int first, int last) const
    {
        const int begin = columns[static_cast<size_t>(first)] - 1;
        return text.mid(begin, columns[static_cast<size_t>(last)] - 1 + fields[last].size() - begin);
    }
};

/// The lines of a CFG text by what they say. A name may hold a comma: then its line has more fields than the
/// configuration says.
struct Places
{
    QString file;
    Place station;
    Place counts;
    std::vector<Place> analog; ///< as the channels of the configuration
    std::vector<Place> states;
    Place frequency;
    Place rateCount;
    std::vector<Place> rates; ///< as the rates of the configuration; fewer if they are not in the text
    Place start;
    Place trigger;
    Place dataType;
    Place timeMultiplier;
    Place timeCode;
    Place timeQuality;
};

} // namespace comtrade
