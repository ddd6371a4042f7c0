#include "zucmtr/watch/conffile.h"

#include "explain/system.h"
#include "text/texts.h"
#include "zucmtr/files/systemfile.h"
#include "zucmtr/terminal/command.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextCodec>

#include <cerrno>

namespace conffile {

namespace {

const QString Suffix = QStringLiteral(".conf");

// A file this long is no file of settings.
constexpr qint64 MostBytes = 1 << 20;

bool IsUtf8(const QByteArray& bytes)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

bool IsComment(const QString& line)
{
    return line.isEmpty() || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';'));
}

// What is wrong with a line, or nothing; then the setting is added.
QString Take(const QString& line, int number, std::vector<Setting>& settings)
{
    if (line.startsWith(QLatin1Char('[')))
        return Tr("conf", "there are no sections here; the file is one recorder's, so leave the line out");
    const int sign = line.indexOf(QLatin1Char('='));
    if (sign < 0)
        return Tr("conf", "'%1' is no setting; write it as 'key = value', or put '#' before a comment")
            .arg(line);
    const QString key = line.left(sign).trimmed();
    const QString value = line.mid(sign + 1).trimmed();
    if (key.isEmpty())
        return Tr("conf", "there is no key before the '='");
    if (value.isEmpty())
        return Tr("conf", "'%1' has no value; give one, or leave the line out").arg(key);
    settings.push_back({key, value, number});
    return QString();
}

File Unreadable(File file, const QString& why)
{
    file.mistakes << file.path + QLatin1String(": ") + why;
    return file;
}

File Read(const QString& path)
{
    File file;
    file.path = path;
    file.recorder = QFileInfo(path).fileName();
    file.recorder.chop(Suffix.size());
    QFile source(path);
    if (!QFileInfo(path).isFile())
        return Unreadable(file, Tr("conf", "it is no regular file"));
    if (!source.open(QIODevice::ReadOnly))
        return Unreadable(file,
                          Tr("conf", "it cannot be read: %1").arg(explain::SystemText(source.errorString())));
    if (source.size() > MostBytes)
        return Unreadable(file, Tr("conf", "it is too long for a file of settings"));
    file = Parsed(path, source.readAll());
    return file;
}

} // namespace

QString Unquoted(const QString& value)
{
    const bool isQuoted = value.size() > 2 && value.startsWith(QLatin1Char('"')) &&
                          value.endsWith(QLatin1Char('"')) && value.count(QLatin1Char('"')) == 2;
    return isQuoted ? value.mid(1, value.size() - 2) : value;
}

QString Mistake(const QString& path, int line, const QString& text)
{
    return path + QLatin1Char(':') + QString::number(line) + QLatin1String(": ") + text;
}

File Parsed(const QString& path, const QByteArray& bytes)
{
    File file;
    file.path = path;
    file.recorder = QFileInfo(path).fileName();
    file.recorder.chop(Suffix.size());
    file.bytes = bytes;
    const QList<QByteArray> lines = bytes.split('\n');
    QString whole; // of lines that a backslash joins
    int first = 0;
    for (int number = 1; number <= lines.size(); ++number) {
        const QByteArray& raw = lines[number - 1];
        if (!IsUtf8(raw)) {
            file.mistakes << Mistake(path, number, Tr("conf", "the line is not UTF-8"));
            continue;
        }
        QString line = QString::fromUtf8(raw).trimmed();
        first = whole.isEmpty() ? number : first;
        if (!(whole.isEmpty() && IsComment(line)) && line.endsWith(QLatin1Char('\\')) &&
            number < lines.size()) {
            line.chop(1);
            whole += line.trimmed() + QLatin1Char(' ');
            continue;
        }
        whole = (whole + line).trimmed();
        const QString wrong = IsComment(whole) ? QString() : Take(whole, first, file.settings);
        if (!wrong.isEmpty())
            file.mistakes << Mistake(path, first, wrong);
        whole.clear();
    }
    return file;
}

std::vector<File> FilesIn(const QString& directory)
{
    const QFileInfo info(directory);
    if (!info.exists())
        throw ConfigurationError(
            Tr("conf", "--config: there is no directory '%1'; check the path").arg(directory));
    if (!info.isDir())
        throw ConfigurationError(
            Tr("conf", "--config: '%1' is no directory; give the one with the recorders' .conf files")
                .arg(directory));
    std::vector<File> files;
    for (const QString& name : systemfile::NamesIn(directory)) {
        if (name.endsWith(Suffix) && !name.startsWith(QLatin1Char('.')))
            files.push_back(Read(QDir(directory).filePath(name)));
    }
    if (files.empty())
        throw ConfigurationError(
            Tr("conf", "--config: there is no .conf file in '%1'; write one for each recorder")
                .arg(directory));
    return files;
}

} // namespace conffile
