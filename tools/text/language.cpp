#include "text/language.h"

#include <QCoreApplication>
#include <QTranslator>

namespace text {

namespace {

class Russian : public QTranslator
{
public:
    Russian()
    {
        // Without the file, which not every program has, the texts are the sources.
        static_cast<void>(load(QStringLiteral(":/translations/zucmtr_ru.qm")));
    }
};

const QTranslator* TranslatorOf(Language language)
{
    static const QTranslator english; // empty, as the sources are English
    static const Russian russian;
    return language == Language::Russian ? &russian : &english;
}

thread_local const QTranslator* chosen = nullptr; // of no one: the user's language

} // namespace

InLanguage::InLanguage(Language language) : before(chosen)
{
    chosen = TranslatorOf(language);
}

InLanguage::~InLanguage()
{
    chosen = before;
}

QString Translated(const char* context, const char* source)
{
    if (chosen == nullptr)
        return QCoreApplication::translate(context, source);
    const QString text = chosen->translate(context, source);
    return text.isEmpty() ? QString::fromUtf8(source) : text;
}

} // namespace text
