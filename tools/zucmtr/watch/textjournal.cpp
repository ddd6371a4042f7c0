#include "zucmtr/watch/textjournal.h"

#include <algorithm>

namespace textjournal {

namespace {

// The lines after it: the mark of a verdict, the fingerprint of the recording, the absolute path of its first
// file; its record if it was converted; the fingerprint of the access to its files if it was converted in
// part or given up. Fields are separated by blanks; their own blanks are written as %XX.
const char* const Header = "zucmtr watch 1\n";
const char* const Marks = "?BFKWCPG"; // in the order of the verdicts
constexpr int PrintSize = 40;

QString Decoded(const QByteArray& bytes)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(bytes));
}

} // namespace

bool Is(const QByteArray& begin)
{
    return !begin.isEmpty() && (begin.startsWith(Header) || QByteArray(Header).startsWith(begin));
}

void Read(const QByteArray& bytes, const Take& take)
{
    using Verdict = WatchJournal::Verdict;
    QList<QByteArray> lines = bytes.split('\n');
    lines.removeLast(); // what follows the last line feed
    for (const QByteArray& line : lines.mid(1)) {
        const QList<QByteArray> words = line.split(' ');
        const int number = words[0].size() == 1 ? QByteArray(Marks).indexOf(words[0]) : 0;
        const auto verdict = static_cast<Verdict>(std::max(number, 0));
        const int least = verdict == Verdict::Converted ? 4 : 3;
        const int most = verdict == Verdict::Converted || verdict == Verdict::GivenUp ? least + 1 : least;
        if (verdict != Verdict::Unknown && words.size() >= least && words.size() <= most &&
            words[1].size() == PrintSize)
            take(Decoded(words[2]), {words[1], verdict, least == 4 ? Decoded(words[3]) : QString(),
                                     Decoded(words.value(least))});
    }
}

} // namespace textjournal
