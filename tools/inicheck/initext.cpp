#include "inicheck/initext.h"

#include <config/GlobalFunction.h>
#include <service/zucmtrconverter.h>

#include <QFile>
#include <QTextCodec>
#include <QTextStream>

namespace inicheck {

namespace {

bool IsComment(const QString& line)
{
    return line.startsWith(QLatin1Char(';')) || line.startsWith(QLatin1Char('#'));
}

// Takes the lines one after the other.
class Reader
{
public:
    explicit Reader(IniText& text_) : text(text_) {}

    void Take(int number, const QString& line)
    {
        if (line.isEmpty())
            return;
        if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']')))
            TakeHeading(number, line);
        else
            TakeOther(number, line);
    }

private:
    void TakeHeading(int number, const QString& line)
    {
        name = line.mid(1, line.length() - 2);
        if (name.isEmpty()) {
            text.oddLines.push_back({number, OddLine::EmptyHeading, line, name});
            return;
        }
        const auto known = places.constFind(name);
        place = known == places.constEnd() ? text.sections.size() : *known;
        if (place == text.sections.size()) {
            places.insert(name, place);
            text.sections.push_back({name, {}, {}, {}});
        }
        text.sections[place].lines.push_back(number);
    }

    void TakeOther(int number, const QString& line)
    {
        const int equals = line.indexOf(QLatin1Char('='));
        if (line.startsWith(QLatin1Char('[')))
            text.oddLines.push_back({number, OddLine::BrokenHeading, line, name});
        else if (IsComment(line))
            return; // with a "=" it is an entry, which nobody asks for
        else if (equals < 0)
            text.oddLines.push_back({number, OddLine::NoKey, line, name});
        else if (name.isEmpty())
            text.oddLines.push_back({number, OddLine::AheadOfSections, line, name});
        else
            AddEntry(number, line, equals);
    }

    void AddEntry(int number, const QString& line, int equals)
    {
        Section& section = text.sections[place];
        const QString key = line.left(equals).trimmed();
        const QString whole = line.mid(equals + 1).trimmed();
        QString value = whole;
        GlobalFunction::ClearComment(value);
        section.last.insert(key, section.entries.size());
        section.entries.push_back({number, key, whole, value});
    }

    IniText& text;
    QHash<QString, size_t> places;
    QString name;
    size_t place = 0;
};

void LookAtBytes(const QString& path, IniText& text)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray head = file.peek(3);
    text.byteOrderMark = head == "\xEF\xBB\xBF";
    text.utf16 = head.startsWith("\xFF\xFE") || head.startsWith("\xFE\xFF");
    for (int number = 1; !text.utf16 && !file.atEnd(); ++number) {
        const QByteArray line = file.readLine();
        QTextCodec::ConverterState state;
        ZuCmtrConverter::codecIni->toUnicode(line.constData(), line.size(), &state);
        if (state.invalidChars > 0 || state.remainingChars > 0)
            text.notUtf8.push_back(number);
    }
}

} // namespace

const Entry* Section::Find(const QString& key) const
{
    const auto found = last.constFind(key);
    return found == last.constEnd() ? nullptr : &entries[*found];
}

const Section* IniText::Find(const QString& name) const
{
    for (const Section& section : sections) {
        if (section.name == name)
            return &section;
    }
    return nullptr;
}

QStringList IniText::Names() const
{
    QStringList names;
    for (const Section& section : sections)
        names << section.name;
    return names;
}

IniText ReadIni(const QString& path)
{
    IniText text;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text | QIODevice::ExistingOnly)) {
        text.error = file.errorString();
        return text;
    }
    LookAtBytes(path, text);
    // The same stream with the same codec as the library's, so that both see the same characters.
    QTextStream stream(&file);
    stream.setCodec(ZuCmtrConverter::codecIni);
    Reader reader(text);
    for (int number = 1; !stream.atEnd(); ++number)
        reader.Take(number, stream.readLine().trimmed());
    return text;
}

} // namespace inicheck
