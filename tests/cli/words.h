// In which language a text of the program is.
#pragma once

#include <QString>
#include <QStringList>

/// The Latin words of the text that are no names: of options, commands, extensions, standards and the like.
QStringList EnglishWords(QString text);

bool HasRussianLetter(const QString& text);
