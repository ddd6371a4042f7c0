#include "inicheck/inilines.h"

#include "config/GlobalFunction.h"
#include "explain/system.h"
#include "service/zucmtrconverter.h"
#include "text/error.h"
#include "text/texts.h"

#include <QFile>
#include <QStringList>
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

IniLine LineOf(int number, const QString& text, const QString& section)
{
    IniLine line{number, LineKind::Stray, text, section, QString(), QString()};
    const int equals = text.indexOf(QLatin1Char('='));
    if (text.isEmpty()) {
        line.kind = LineKind::Blank;
    } else if (text.startsWith(QLatin1Char('[')) && text.endsWith(QLatin1Char(']'))) {
        line.kind = LineKind::Section;
        line.section = text.mid(1, text.length() - 2);
    } else if (equals >= 0 && !section.isEmpty()) {
        line.kind = LineKind::Entry;
        line.key = text.left(equals).trimmed();
        line.value = text.mid(equals + 1);
        GlobalFunction::ClearComment(line.value);
    }
    return line;
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
    QTextStream stream(&file);
    stream.setCodec(ZuCmtrConverter::codecIni);
    QString section;
    for (int number = 1; !stream.atEnd(); ++number) {
        lines.push_back(LineOf(number, stream.readLine().trimmed(), section));
        const IniLine& line = lines.back();
        section = line.section;
        if (line.kind == LineKind::Entry) {
            counting[FullKey(section, line.key)] = lines.size() - 1;
            entries[section].push_back(lines.size() - 1);
        } else if (line.kind == LineKind::Section && !firstLines.contains(section)) {
            firstLines.insert(section, number);
            sections << section;
        }
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
