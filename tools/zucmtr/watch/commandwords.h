// A command in one text, as --exec has it, as a program and its arguments. No shell sees it.
#pragma once

#include <QString>
#include <QStringList>

/// The words of the command, at least one. Blanks separate words; within '...' nothing is special, within
/// "..." only the backslash; a backslash takes the next character as it is. Variables, patterns, pipes and
/// redirections are characters like others. Throws ConfigurationError for a quotation mark without its
/// second one, a backslash at the end, and a command without words.
QStringList CommandWords(const QString& command);

/// The program must be an executable file: by its path, or without a slash in one of the directories of PATH.
/// Throws ConfigurationError.
void CheckProgram(const QString& program);
