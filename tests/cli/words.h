// The language that a text of the program is in.
#pragma once

#include <QString>
#include <QStringList>

/// The Latin words in the text that are not names: of options, commands, extensions, standards and the like.
QStringList EnglishWords(QString text);

bool HasRussianLetter(const QString& text);
