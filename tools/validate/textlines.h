// Lines of a text with their ends, as they stand in the file.
#pragma once

#include <QString>

#include <vector>

namespace validate {

enum class LineEnd { None, LineFeed, CarriageReturn, Both };

struct TextLine
{
    QString text; ///< without its end
    LineEnd end = LineEnd::None;
};

/// The lines of a text. Each CR, LF and CR LF ends one; the last may have no end. The mark of the end of a
/// file (1Ah) and what follows it is left out.
std::vector<TextLine> LinesOf(const QString& text);

/// A field of a line and where it starts.
struct TextField
{
    QString text; ///< without blanks around it
    int column = 0; ///< of its first character, from 1
};

/// The fields of a line, separated by commas.
std::vector<TextField> FieldsOf(const QString& line);

} // namespace validate
