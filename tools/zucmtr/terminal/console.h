// What the program says: results on standard output, all else on standard error, both always in UTF-8.
#pragma once

#include <QString>
#include <QStringList>

class QJsonObject;

/// To be called first of all. Occupies those of the standard streams that the program was started without, so
/// that no file it opens gets what is meant for them. Writing there fails as before.
void HoldStandardStreams();

/// One line on standard output, at once, so that a long run shows how far it is. Control characters in the
/// text are shown as "?".
void PrintLine(const QString& text);

/// The object as one line on standard output, at once. Nothing in it is lost: control characters are escaped.
void PrintJson(const QJsonObject& object);

/// One line on standard error, after the program's name; control characters as above, line feeds too.
void Complain(const QString& text);

/// Several lines, the first after the program's name.
void Complain(const QStringList& lines);

/// False if standard output has lost something, as on a full disk.
bool OutputIsWhole();

/// The text as one word of a shell command: in single quotes where it needs them.
QString ShellWord(const QString& text);
