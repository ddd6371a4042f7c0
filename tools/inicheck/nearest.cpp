#include "inicheck/nearest.h"

#include "text/texts.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace inicheck {

namespace {

// Levenshtein distance, computed with a single row of the table.
int Distance(const QString& from, const QString& to)
{
    std::vector<int> row(static_cast<size_t>(to.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (int i = 0; i < from.size(); ++i) {
        int diagonal = row[0];
        row[0] = i + 1;
        for (int j = 0; j < to.size(); ++j) {
            int& cell = row[static_cast<size_t>(j) + 1];
            const int replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = cell;
            cell = std::min({replaced, cell + 1, row[static_cast<size_t>(j)] + 1});
        }
    }
    return row.back();
}

} // namespace

QString WithLatinLetters(QString word)
{
    const QString cyrillic = QStringLiteral("АВЕКМНОРСТУХасеорху");
    const QString latin = QStringLiteral("ABEKMHOPCTYXaceopxy");
    for (QChar& letter : word) {
        const int place = cyrillic.indexOf(letter);
        if (place >= 0)
            letter = latin[place];
    }
    return word;
}

QString Nearest(const QString& word, const QStringList& known)
{
    constexpr int longest = 200; // a longer word is no misspelling
    const QString plain = WithLatinLetters(word.simplified()).toLower();
    if (plain.size() > longest)
        return QString();
    QString nearest;
    int fewest = std::max(1, int(plain.size()) / 3) + 1;
    for (const QString& candidate : known) {
        const int distance = Distance(plain, WithLatinLetters(candidate).toLower());
        if (distance < fewest) {
            fewest = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

QString MeantText(const QString& nearest)
{
    return nearest.isEmpty() ? QString() : Tr("check", "; is '%1' meant?").arg(nearest);
}

} // namespace inicheck
