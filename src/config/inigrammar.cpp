#include "config/inigrammar.h"

#include "config/GlobalFunction.h"

#include <QTextStream>

bool zu::ReadIniLine(QTextStream& stream, IniLine& line)
{
    if (stream.atEnd())
        return false;
    ++line.number;
    line.text = stream.readLine().trimmed();
    line.key.clear();
    line.value.clear();
    if (line.text.isEmpty()) {
        line.kind = IniLineKind::Blank;
    } else if (line.text.startsWith(QLatin1Char('[')) && line.text.endsWith(QLatin1Char(']'))) {
        line.kind = IniLineKind::Section;
        line.section = line.text.mid(1, line.text.length() - 2);
    } else if (const auto equals = line.text.indexOf(QLatin1Char('=')); equals >= 0) {
        line.kind = line.section.isEmpty() ? IniLineKind::Outside : IniLineKind::Entry;
        line.key = line.text.left(equals).trimmed();
        line.value = line.text.mid(equals + 1);
        GlobalFunction::ClearComment(line.value);
    } else {
        line.kind = IniLineKind::Stray;
    }
    return true;
}
