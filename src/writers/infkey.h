// A line of the INF file.
#pragma once

class QFile;
class QString;
class ResorterZuCmtrConv;

namespace zu {

/// Writes key (with its equals sign), value and line end; value may be any text. A failed write sets err and
/// throws, as ResorterZuCmtrConv::WriteString does.
void WriteInfKey(ResorterZuCmtrConv& resorter, QFile& file, const char* key, const QString& value, bool& err);

} // namespace zu
