// A part of a record in the words of people.
#pragma once

#include "forms/export.h"
#include "text/error.h"

#include <optional>

namespace forms {

/// A text that is no moment, or none of this record.
class MomentError : public text::Error
{
public:
    using text::Error::Error;
};

/// Whether the text is a moment: seconds ("-0.2", "0.5s", "200ms"), or a date and time as in ISO 8601
/// ("2024-01-31T12:00:00.25", with "Z" or an offset such as "+03:00" if the clock is another one than the
/// record's).
bool IsMoment(const QString& text);

/// Seconds from the trigger to a moment; none for an empty text. Throws MomentError for what is no moment,
/// and for one with an offset if the record's own is not known.
std::optional<double> SecondsOf(const QString& text, const comtrade::Configuration& config);

} // namespace forms
