// The log file: each call opens, appends and closes it. A log that cannot be written is reported to the debug
// output and to nobody else.
#pragma once

#include <QString>

#include <vector>

namespace zu {

inline QString LogFilePath;

/// Appends one line, in the locale's encoding.
void WriteToLog(const QString& text);

/// Appends several lines, in CodecIni.
void WriteToLog(const std::vector<QString>& lines);

} // namespace zu
