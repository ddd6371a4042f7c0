// Checks of paths and ini sections before a command begins. All throw ConfigurationError with a text that
// names the option, the value and what to do.
#pragma once

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

/// The directory that an option names, in the form in which the library takes it, without a final slash. It
/// must exist and be writable; none is made, so that a slip of the pen does not scatter files.
QString CheckedDirectory(const QString& option, const QString& path);

/// The same for --out.
QString CheckedOutputDirectory(const QString& path);

/// Makes the directory and those above it, if it is not there.
void MakeDirectory(const QString& option, const QString& path);

/// The ini file must be a readable file, in an encoding that the converter understands.
void CheckIniFile(const QString& path);

/// The log file must be one that can be appended to, or not exist yet in a directory that can be written to;
/// what is no regular file is seen when it is opened.
void CheckLogFile(const QString& path);

/// Says which sections the ini file has if `section` is not among them; empty if it is.
QString MissingSectionText(const QString& iniPath, const QString& section);

/// Each option must name another file to be written; the pairs are of option and path. Empty paths are none.
void CheckOutputsDiffer(const QVector<QPair<QString, QString>>& outputs);

/// An output must not take the place of what is read: of `input`, or of a file that belongs to it by its name
/// (the pieces of a record, the continuations of a recording). An empty path is no output.
void CheckIsNoInput(const QString& option, const QString& path, const QString& input);
