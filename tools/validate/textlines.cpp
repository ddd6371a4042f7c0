#include "validate/textlines.h"

namespace validate {

std::vector<TextLine> LinesOf(const QString& text)
{
    constexpr QChar EndOfFile(0x1A);
    const int end = text.indexOf(EndOfFile);
    const int size = end < 0 ? text.size() : end;
    std::vector<TextLine> lines;
    int start = 0;
    for (int i = 0; i < size; ++i) {
        const bool isReturn = text[i] == QLatin1Char('\r');
        if (!isReturn && text[i] != QLatin1Char('\n'))
            continue;
        const bool both = isReturn && i + 1 < size && text[i + 1] == QLatin1Char('\n');
        const LineEnd kind = both       ? LineEnd::Both
                             : isReturn ? LineEnd::CarriageReturn
                                        : LineEnd::LineFeed;
        lines.push_back({text.mid(start, i - start), kind});
        i += both ? 1 : 0;
        start = i + 1;
    }
    if (start < size)
        lines.push_back({text.mid(start, size - start), LineEnd::None});
    return lines;
}

std::vector<TextField> FieldsOf(const QString& line)
{
    std::vector<TextField> fields;
    int start = 0;
    for (const QString& part : line.split(QLatin1Char(','))) {
        const QString field = part.trimmed();
        const int blanks = field.isEmpty() ? 0 : part.indexOf(field);
        fields.push_back({field, start + blanks + 1});
        start += part.size() + 1;
    }
    return fields;
}

} // namespace validate
