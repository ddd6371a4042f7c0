#include "words.h"

#include <QRegularExpression>

namespace {

// Words that belong to no language: options, file names, keys of the ini file, standards and their parts,
// signals.
const QStringList& NamesOfThings()
{
    static const QStringList names = {
        "zucmtr", "archive", "update", "find",     "stats",      "check",   "convert",  "dictionary",
        "info",   "sample",  "events", "lines",    "CSV",        "RFC",     "validate", "verify",
        "view",   "watch",   "help",   "COMTRADE", "IEEE",       "ini",     "Ini",      "mkdir",
        "JSON",   "HTML",    "SVG",    "PNG",      "Ctrl",       "SIGTERM", "cron",     "Default",
        "Device", "cp",      "single", "two",      "three",      "none",    "ZuDrv",    "AG",
        "BG",     "CG",      "AB",     "BC",       "CA",         "ABG",     "BCG",      "CAG",
        "ABC",    "success", "fault",  "cfg",      "cff",        "CFF",     "time",     "trigger",
        "UTC",    "export",  "csv",    "mat",      "MAT",        "MATLAB",  "ISO",      "utf",
        "FILE",   "name",    "source", "folder",   "station",    "device",  "subject",  "year",
        "month",  "day",     "hour",   "minute",   "second",     "date",    "PATH",     "TIME",
        "ms",     "CP",      "KOI",    "GBK",      "postgresql", "user",    "host",     "database",
        "kA",     "SQL",     "page",   "index",    "html",       "faults",  "all"};
    return names;
}

} // namespace

QStringList EnglishWords(QString text)
{
    text.remove(QRegularExpression("(?<![\\w-])--?[a-z][-a-z]*")); // options
    text.remove(QRegularExpression("\\.[A-Za-z][-A-Za-z0-9]*"));   // extensions and hidden files
    QStringList words;
    auto matches = QRegularExpression("[A-Za-z]{2,}").globalMatch(text);
    while (matches.hasNext()) {
        const QString word = matches.next().captured();
        if (!NamesOfThings().contains(word))
            words << word;
    }
    return words;
}

bool HasRussianLetter(const QString& text)
{
    return text.contains(QRegularExpression("[А-яЁё]"));
}
