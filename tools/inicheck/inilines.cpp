#include "inicheck/inilines.h"

#include "base/codecs.h"
#include "base/decodedtext.h"
#include "explain/system.h"
#include "text/error.h"
#include "text/texts.h"

#include <QFile>
#include <QTextCodec>
#include <QTextStream>

namespace inicheck {

namespace {

QString FullKey(const QString& section, const QString& key)
{
    return section + QLatin1Char('/') + key;
}

std::vector<int> NotUtf8(const QByteArray& bytes)
{
    std::vector<int> numbers;
    int number = 0;
    for (const QByteArray& line : bytes.split('\n')) {
        ++number;
        QTextCodec::ConverterState state;
        QTextCodec::codecForName("UTF-8")->toUnicode(line.constData(), line.size(), &state);
        if (state.invalidChars > 0 || state.remainingChars > 0)
            numbers.push_back(number);
    }
    return numbers;
}

} // namespace

IniLines::IniLines(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw text::Error(
            Tr("check", "'%1' cannot be read: %2").arg(path, explain::SystemText(file.errorString())));
    const QByteArray bytes = file.readAll();
    byteOrderMark = bytes.startsWith("\xEF\xBB\xBF");
    encoding = OtherEncodingOf(bytes);
    if (!encoding)
        badlyEncoded = NotUtf8(bytes);
    file.seek(0);
    QString text = zu::DecodedText(file, zu::CodecIni);
    QTextStream stream(&text);
    IniLine line;
    while (zu::ReadIniLine(stream, line)) {
        if (line.kind == LineKind::Entry) {
            counting[FullKey(line.section, line.key)] = lines.size();
            entries[line.section].push_back(lines.size());
        } else if (line.kind == LineKind::Section && !firstLines.contains(line.section)) {
            firstLines.insert(line.section, line.number);
            sections << line.section;
        }
        lines.push_back(line);
    }
}

const IniLine* IniLines::Find(const QString& section, const QString& key) const
{
    const auto found = counting.constFind(FullKey(section, key));
    return found == counting.constEnd() ? nullptr : &lines[*found];
}

std::vector<const IniLine*> IniLines::EntriesOf(const QString& section) const
{
    std::vector<const IniLine*> counted;
    for (const size_t place : entries.value(section)) {
        if (Find(section, lines[place].key) == &lines[place])
            counted.push_back(&lines[place]);
    }
    return counted;
}

int IniLines::LineOfSection(const QString& section) const
{
    return firstLines.value(section, 0);
}

QStringList IniLines::Sections() const
{
    return sections;
}

} // namespace inicheck
