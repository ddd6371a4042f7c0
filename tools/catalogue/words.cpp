#include "catalogue/words.h"

namespace catalogue {

QStringList WordsIn(const QString& text)
{
    const QVector<uint> letters =
        (text.toCaseFolded().normalized(QString::NormalizationForm_C) + QLatin1Char(' ')).toUcs4();
    QStringList words;
    QString word;
    for (const uint letter : letters) {
        if (QChar::isMark(letter)) // a stress, or another sign that a letter has no form of its own with
            continue;
        if (QChar::isLetterOrNumber(letter)) {
            const uint plain = letter == 0x451 ? 0x435 : letter; // ё, е
            word += QString::fromUcs4(&plain, 1);
        } else if (!word.isEmpty()) {
            words << word;
            word.clear();
        }
    }
    words.removeDuplicates();
    return words;
}

QString SearchFor(const QString& text, sql::Dialect dialect)
{
    const bool isServer = dialect == sql::Dialect::Postgres;
    QStringList words = WordsIn(text);
    for (QString& word : words)
        word = (isServer ? QStringLiteral("'%1':*") : QStringLiteral("\"%1\"*")).arg(word);
    return words.join(QLatin1String(isServer ? " & " : " "));
}

} // namespace catalogue
