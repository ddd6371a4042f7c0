#include "analysis/linedata.h"

#include "analysis/linezones.h"
#include "base/codecs.h"
#include "base/decodedtext.h"
#include "config/inigrammar.h"
#include "explain/system.h"
#include "text/reasons.h"
#include "text/texts.h"

#include <QBuffer>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTextCodec>
#include <QTextStream>

#include <array>
#include <cmath>

namespace analysis {

namespace {

// A key whose value is a number.
struct NumberKey
{
    const char* name;
    double Line::* field;
    bool mayBeZero; // a resistance may be; nothing may be less
    bool isNeeded;  // for a distance
};

constexpr std::array<NumberKey, 7> numberKeys = {{
    {"length", &Line::length, false, true},
    {"r1", &Line::r1, true, true},
    {"x1", &Line::x1, false, true},
    {"r0", &Line::r0, true, true},
    {"x0", &Line::x0, false, true},
    {"r0m", &Line::mutualR, true, false},
    {"x0m", &Line::mutualX, false, false},
}};

struct TextKey
{
    const char* name;
    QString Line::* field;
};

constexpr std::array<TextKey, 2> textKeys = {{{"parallel", &Line::parallel}, {"voltages", &Line::voltages}}};

const char ZonePrefix[] = "zone";

// 1 to 9; 0 if the key is not that of a zone.
int ZoneNumber(const QString& key)
{
    const QString number = key.mid(4);
    return key.startsWith(QLatin1String(ZonePrefix)) && number.size() == 1 ? number.toInt() : 0;
}

// Comments are no lines of their own in the grammar, but people write them.
bool IsComment(const QString& text)
{
    return text.startsWith(QLatin1Char(';')) || text.startsWith(QLatin1Char('#'));
}

class Parsing
{
public:
    void Take(const zu::IniLine& line)
    {
        if (IsComment(line.text))
            return;
        if (line.kind == zu::IniLineKind::Section)
            Open(line);
        else if (line.kind == zu::IniLineKind::Entry)
            Set(line);
        else if (line.kind == zu::IniLineKind::Outside)
            Warn(line.number, reason::LineOutsideSection,
                 Tr("lines", "ignored: '%1' is before the first section; put it under the [circuit] it is of")
                     .arg(line.text));
        else if (line.kind == zu::IniLineKind::Stray)
            Warn(line.number, reason::StrayLine,
                 Tr("lines", "ignored: '%1' is neither a [circuit] nor key=value").arg(line.text));
    }

    void AddError(int row, const char* reason, const QString& text)
    {
        file.problems.push_back({row, true, reason, text});
    }

    LineFile Finish()
    {
        for (const Line& line : file.lines)
            ReportMissing(line);
        return std::move(file);
    }

private:
    void Open(const zu::IniLine& line)
    {
        keys.clear();
        for (const Line& known : file.lines)
            if (known.circuit == line.section)
                AddError(line.number, reason::SectionTwice,
                         Tr("lines", "[%1] is there already in line %2; put both into one section")
                             .arg(line.section)
                             .arg(known.row));
        file.lines.emplace_back();
        file.lines.back().circuit = line.section;
        file.lines.back().row = line.number;
        file.lines.back().missing = NeededLineKeys();
    }

    void Set(const zu::IniLine& entry)
    {
        Line& line = file.lines.back();
        if (keys.contains(entry.key))
            Warn(entry.number, reason::KeyTwice,
                 Tr("lines", "[%1] has '%2' twice; the last one counts").arg(line.circuit, entry.key));
        keys.insert(entry.key);
        for (const TextKey& key : textKeys)
            if (entry.key == QLatin1String(key.name)) {
                line.*key.field = entry.value;
                return;
            }
        if (ZoneNumber(entry.key) > 0)
            SetZone(line, entry);
        else if (!SetNumber(line, entry))
            Warn(entry.number, reason::UnknownKey,
                 Tr("lines", "ignored: [%1] has the unknown key '%2'; known are %3")
                     .arg(line.circuit, entry.key, LineKeys().join(QLatin1String(", "))));
    }

    bool SetNumber(Line& line, const zu::IniLine& entry)
    {
        for (const NumberKey& key : numberKeys) {
            if (entry.key != QLatin1String(key.name))
                continue;
            double value = 0;
            const QString trouble = entry.value.isEmpty() ? QString() : NumberTrouble(entry.value, value);
            if (!trouble.isEmpty())
                AddError(entry.number, reason::NotANumber, Place(line, entry) + trouble);
            else if (value < 0 || (value == 0 && !key.mayBeZero && !entry.value.isEmpty()))
                AddError(entry.number, reason::NumberOutOfRange,
                         Place(line, entry) + (key.mayBeZero ? Tr("lines", "it cannot be below 0")
                                                             : Tr("lines", "it has to be above 0")));
            else
                line.*key.field = value;
            if (!entry.value.isEmpty())
                line.missing.removeAll(entry.key);
            return true;
        }
        return false;
    }

    void SetZone(Line& line, const zu::IniLine& entry)
    {
        if (entry.value.isEmpty())
            return;
        Zone zone;
        zone.number = ZoneNumber(entry.key);
        const QString trouble = ParseZone(entry.value, zone);
        if (trouble.isEmpty())
            line.zones.push_back(zone);
        else
            AddError(entry.number, reason::BadZone, Place(line, entry) + trouble);
    }

    // A section with none of them is a draft.
    void ReportMissing(const Line& line)
    {
        if (!line.missing.isEmpty() && line.missing.size() < NeededLineKeys().size())
            Warn(line.row, reason::KeyMissing,
                 Tr("lines", "[%1] lacks %2; without it there is no distance to a fault on it")
                     .arg(line.circuit, line.missing.join(QLatin1String(", "))));
    }

    static QString Place(const Line& line, const zu::IniLine& entry)
    {
        return Tr("lines", "[%1] %2 = '%3': ").arg(line.circuit, entry.key, entry.value);
    }

    void Warn(int row, const char* reason, const QString& text)
    {
        file.problems.push_back({row, false, reason, text});
    }

    LineFile file;
    QSet<QString> keys; // of the open section
};

// The first row that is not UTF-8; 0 if all are.
int FirstBadRow(const QByteArray& text)
{
    int row = 0;
    for (const QByteArray& line : text.split('\n')) {
        ++row;
        QTextCodec::ConverterState state;
        QTextCodec::codecForName("UTF-8")->toUnicode(line.constData(), line.size(), &state);
        if (state.invalidChars > 0 || state.remainingChars > 0)
            return row;
    }
    return 0;
}

} // namespace

QStringList NeededLineKeys()
{
    QStringList names;
    for (const NumberKey& key : numberKeys)
        if (key.isNeeded)
            names << QLatin1String(key.name);
    return names;
}

QStringList LineKeys()
{
    QStringList names;
    for (const NumberKey& key : numberKeys)
        names << QLatin1String(key.name);
    for (const TextKey& key : textKeys)
        names << QLatin1String(key.name);
    return names << QStringLiteral("zone1 ... zone9");
}

LineFile ParseLines(const QByteArray& text)
{
    Parsing parsing;
    const int bad = FirstBadRow(text);
    if (bad > 0) {
        parsing.AddError(bad, reason::NotUtf8,
                         Tr("lines", "the line is not UTF-8; convert the file, for example by: iconv -f "
                                     "WINDOWS-1251 -t UTF-8"));
        return parsing.Finish();
    }
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    QString decoded = zu::DecodedText(buffer, zu::CodecUtf8);
    QTextStream stream(&decoded);
    zu::IniLine line;
    while (zu::ReadIniLine(stream, line))
        parsing.Take(line);
    return parsing.Finish();
}

LineFile ReadLineFile(const QString& path)
{
    constexpr qint64 largest = qint64{16} << 20; // bytes; thousands of lines take less
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw text::Error(
            Tr("lines", "'%1' cannot be read: %2").arg(path, explain::SystemText(file.errorString())));
    if (file.size() > largest)
        throw text::Error(Tr("lines", "'%1' is too large for the data of lines").arg(path));
    return ParseLines(file.readAll());
}

Lines ReadLines(const QString& path)
{
    LineFile file = ReadLineFile(path);
    QStringList rows;
    for (const LineProblem& problem : file.problems)
        if (problem.isError)
            rows << QStringLiteral("%1:%2: ").arg(path).arg(problem.row) + problem.text;
    if (!rows.isEmpty())
        throw text::Error(rows.join(QLatin1Char('\n')));
    return std::move(file.lines);
}

} // namespace analysis
