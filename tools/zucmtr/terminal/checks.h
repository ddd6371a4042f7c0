// Checks of paths and ini sections before a command starts. All throw ConfigurationError with a text that
// names the option and the value and says what to do.
#pragma once

#include <QPair>
#include <QString>
#include <QVector>

/// The directory that an option names, as the library wants it, without a final slash. It must exist and be
/// writable; none is made, so that a typing mistake does not scatter files.
QString CheckedDirectory(const QString& option, const QString& path);

/// Makes the directory and those above it, if they do not exist.
void MakeDirectory(const QString& option, const QString& path);

/// The ini file must be a readable file, in an encoding that the converter understands.
void CheckIniFile(const QString& path);

/// The log file must be one that can be appended to, or not exist yet in a directory that can be written to;
/// anything but a regular file is checked when it is opened.
void CheckLogFile(const QString& path);

/// The section that an option names must be one of the ini file's; the text says which it has. An empty
/// name is none.
void CheckSection(const QString& option, const QString& iniPath, const QString& section);

/// Each option must name a different file to write to; the pairs are of option and path. Empty paths are
/// ignored.
void CheckOutputsDiffer(const QVector<QPair<QString, QString>>& outputs);

/// An output must not replace an input: `input` itself, or a file that belongs to it by its name (the pieces
/// of a record, the continuations of a recording). An empty path is no output.
void CheckIsNoInput(const QString& option, const QString& path, const QString& input);
