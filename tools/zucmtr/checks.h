// Checks of paths and ini sections before a command begins. All throw ConfigurationError with a text that
// names the option, the value and what to do.
#pragma once

#include <QString>

/// The directory in the form in which the library takes it, without a final slash. It must exist and be
/// writable; none is made, so that a slip of the pen does not scatter files.
QString CheckedOutputDirectory(const QString& path);

/// The ini file must be a readable file.
void CheckIniFile(const QString& path);

/// The log file must be one that can be appended to, or not exist yet in a directory that can be written to.
void CheckLogFile(const QString& path);

/// Says which sections the ini file has if `section` is not among them; empty if it is.
QString MissingSectionText(const QString& iniPath, const QString& section);
