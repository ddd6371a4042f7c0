#include "catalogue/words.h"

#include <QRegularExpression>

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
            const char32_t plain = letter == 0x451 ? 0x435 : letter; // ё, е
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
    QStringList terms;
    for (const QString& part : text.split(QRegularExpression(QStringLiteral("(?<=\\*)|\\s")))) {
        QStringList words = WordsIn(part);
        const bool isBeginning =
            part.endsWith(QLatin1Char('*')) && part.size() > 1 && part.at(part.size() - 2).isLetterOrNumber();
        for (int i = 0; i < words.size(); ++i) {
            const bool isLast = i + 1 == words.size();
            terms << (isServer ? QStringLiteral("'%1'%2") : QStringLiteral("\"%1\"%2"))
                         .arg(words[i],
                              isBeginning && isLast ? QLatin1String(isServer ? ":*" : "*") : QLatin1String());
        }
    }
    return terms.join(QLatin1String(isServer ? " & " : " "));
}

} // namespace catalogue
