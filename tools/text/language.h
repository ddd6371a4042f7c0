// In which language Tr() speaks: the user's, unless some work needs another one, as a page with its texts in
// two languages does.
#pragma once

#include <QString>

class QTranslator;

namespace text {

enum class Language { English, Russian };

/// While it lives, Tr() gives texts in its language, on the thread that made it.
class InLanguage
{
public:
    explicit InLanguage(Language language);
    ~InLanguage();
    InLanguage(const InLanguage&) = delete;
    InLanguage& operator=(const InLanguage&) = delete;

private:
    const QTranslator* const before;
};

/// The text from the program's translations; the source itself where there is none.
QString Translated(const char* context, const char* source);

} // namespace text
