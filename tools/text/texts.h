// Texts for people, in the language of the user's locale. lupdate finds them by these functions
// (scripts/update-translations.sh); both arguments are literals, the context is the file's subject.
#pragma once

#include "text/language.h"

#include <QString>

#include <string>

/// The text in the user's language. Fill in values with arg().
inline QString Tr(const char* context, const char* source)
{
    return text::Translated(context, source);
}

/// The same for the parser of the command line.
inline std::string HelpText(const char* context, const char* source)
{
    return text::Translated(context, source).toStdString();
}
