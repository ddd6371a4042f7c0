#include "inicheck/inilines.h"

#include "base/codecs.h"
#include "base/decodedtext.h"
#include "explain/system.h"
#include "text/error.h"
#include "text/texts.h"

#include <QFile>
#include <QTextCodec>
#include <QTextStream>

#include <mutex>

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

// A program asks for one file several times while it starts. What the same bytes gave stands for them.
IniLines::IniLines(const QString& path)
{
    static std::mutex mutex;
    static QByteArray lastBytes;
    static std::shared_ptr<const Parsed> last;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw text::Error(
            Tr("check", "'%1' cannot be read: %2").arg(path, explain::SystemText(file.errorString())));
    const QByteArray bytes = file.readAll();
    const std::lock_guard<std::mutex> lock(mutex);
    if (last == nullptr || bytes != lastBytes) {
        file.seek(0);
        last = Parse(bytes, zu::DecodedText(file, zu::CodecIni));
        lastBytes = bytes;
    }
    parsed = last;
}

std::shared_ptr<const IniLines::Parsed> IniLines::Parse(const QByteArray& bytes, QString text)
{
    const auto result = std::make_shared<Parsed>();
    result->byteOrderMark = bytes.startsWith("\xEF\xBB\xBF");
    result->encoding = OtherEncodingOf(bytes);
    if (!result->encoding)
        result->badlyEncoded = NotUtf8(bytes);
    QTextStream stream(&text);
    IniLine line;
    while (zu::ReadIniLine(stream, line)) {
        const size_t place = result->lines.size();
        if (line.kind == LineKind::Entry) {
            result->counting[FullKey(line.section, line.key)] = place;
            result->entries[line.section].push_back(place);
        } else if (line.kind == LineKind::Section && !result->firstLines.contains(line.section)) {
            result->firstLines.insert(line.section, line.number);
            result->sections << line.section;
        }
        result->lines.push_back(line);
    }
    return result;
}

const IniLine* IniLines::Find(const QString& section, const QString& key) const
{
    const auto found = parsed->counting.constFind(FullKey(section, key));
    return found == parsed->counting.constEnd() ? nullptr : &parsed->lines[*found];
}

std::vector<const IniLine*> IniLines::EntriesOf(const QString& section) const
{
    std::vector<const IniLine*> counted;
    for (const size_t place : parsed->entries.value(section)) {
        if (Find(section, parsed->lines[place].key) == &parsed->lines[place])
            counted.push_back(&parsed->lines[place]);
    }
    return counted;
}

int IniLines::LineOfSection(const QString& section) const
{
    return parsed->firstLines.value(section, 0);
}

QStringList IniLines::Sections() const
{
    return parsed->sections;
}

} // namespace inicheck
