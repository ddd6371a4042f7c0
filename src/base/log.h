// The log file: each call opens it, appends to it and closes it. If the log cannot be written, only the debug
// output says so.
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
