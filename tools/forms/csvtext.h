// The texts of a CSV file (RFC 4180): a line of titles, then a line for each record, with its time in front.
#pragma once

#include "forms/export.h"
#include "forms/stream.h"

#include <QByteArray>
#include <QDate>

#include <array>

namespace forms {

inline char SeparatorOf(const CsvForm& form)
{
    return form.decimalComma ? ';' : ',';
}
inline char PointOf(const CsvForm& form)
{
    return form.decimalComma ? ',' : '.';
}

/// The first line with its end, in UTF-8. Where numbers have a decimal comma, the file is for spreadsheets,
/// which know UTF-8 by a byte order mark only; other readers would take one for a part of the first title.
QByteArray CsvTitles(const comtrade::Configuration& configuration, const CsvForm& form);

/// The time of a record.
class CsvTimeText
{
public:
    static constexpr size_t Longest = 64; ///< bytes

    /// Throws text::Error if dates are asked for and the trigger has none.
    CsvTimeText(const comtrade::Configuration& configuration, const CsvForm& form);

    /// Writes nanoseconds from the trigger to `to` and returns the end; nothing for Block::NoTime.
    char* Put(char* to, qint64 time);

    /// The reverse; false if the text is not as Put writes it.
    bool Parse(const char* begin, const char* end, qint64& time);

private:
    char* PutSeconds(char* to, qint64 time) const;
    char* PutMoment(char* to, qint64 time);
    bool ParseSeconds(const char* begin, const char* end, qint64& time) const;
    bool ParseMoment(const char* begin, const char* end, qint64& time);
    void SetDay(qint64 day_);

    const CsvForm form;
    const comtrade::TimeStamp trigger;
    const QByteArray offset; // from UTC, if it is known
    qint64 day = 0;          // of the last moment, from the trigger's
    QByteArray date;         // its text
};

} // namespace forms
