// What the program prints: results on standard output, everything else on standard error, always in UTF-8.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

class QJsonObject;

/// To be called before anything else. Occupies those of the standard streams that are closed when the program
/// starts, so that no file it opens gets what is meant for them. Writing there fails as before.
void HoldStandardStreams();

/// Prints one line on standard output at once, so that a long run shows its progress. Control characters in
/// the text are shown as "?".
void PrintLine(const QString& text);

/// Prints the object as one line on standard output, at once. Control characters are escaped.
void PrintJson(const QJsonObject& object);

/// Prints bytes on standard output as they are, at once: a file format of its own.
void PrintBytes(const QByteArray& bytes);

/// Prints one line on standard error, after the program's name; line feeds count as control characters.
void Complain(const QString& text);

/// The same for several lines, the first after the program's name.
void Complain(const QStringList& lines);

/// How many letters a line of the terminal that standard output is has; 0 if it is none.
int OutputColumns();

/// False if some output to standard output was lost, as on a full disk.
bool OutputIsWhole();

/// The text as one word of a shell command: in single quotes where it needs them.
QString ShellWord(const QString& text);
