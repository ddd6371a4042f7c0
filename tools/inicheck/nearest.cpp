#include "inicheck/nearest.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace inicheck {

namespace {

constexpr int LongestWord = 200; // no key is that long; keeps the table small
constexpr int Step = 4;          // weight of a letter that is another one

const QString CyrillicLetters = QStringLiteral("АВЕКМНОРСТУХавекмнорстух");
const QString LatinLetters = QStringLiteral("ABEKMHOPCTYXabekmhopctyx");

int CostOf(QChar a, QChar b)
{
    if (a == b)
        return 0;
    const QString left = WithLatinLetters(QString(a));
    const QString right = WithLatinLetters(QString(b));
    return left.compare(right, Qt::CaseInsensitive) == 0 ? 1 : Step;
}

int Distance(const QString& a, const QString& b)
{
    const int width = b.length() + 1;
    std::vector<std::vector<int>> cost(static_cast<size_t>(a.length()) + 1,
                                       std::vector<int>(static_cast<size_t>(width)));
    const auto at = [&cost](int i, int j) -> int& {
        return cost[static_cast<size_t>(i)][static_cast<size_t>(j)];
    };
    for (int i = 0; i <= a.length(); ++i) {
        for (int j = 0; j < width; ++j) {
            if (i == 0 || j == 0) {
                at(i, j) = Step * (i + j);
                continue;
            }
            at(i, j) = std::min(
                {at(i - 1, j) + Step, at(i, j - 1) + Step, at(i - 1, j - 1) + CostOf(a[i - 1], b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                at(i, j) = std::min(at(i, j), at(i - 2, j - 2) + Step);
        }
    }
    return at(a.length(), b.length());
}

} // namespace

QString WithLatinLetters(QString text)
{
    for (QChar& letter : text) {
        const int place = CyrillicLetters.indexOf(letter);
        if (place >= 0)
            letter = LatinLetters[place];
    }
    return text;
}

QString Nearest(const QString& text, const QStringList& known)
{
    QString nearest;
    int least = Step * std::max(1, text.length() / 3) + 1; // about a third of the letters may be wrong
    if (text.length() > LongestWord)
        return nearest;
    for (const QString& word : known) {
        if (Step * std::abs(word.length() - text.length()) >= least)
            continue;
        const int distance = Distance(text, word);
        if (distance < least) {
            least = distance;
            nearest = word;
        }
    }
    return nearest;
}

} // namespace inicheck
