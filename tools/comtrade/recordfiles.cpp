#include "comtrade/recordfiles.h"

#include "comtrade/forgiving.h"
#include "explain/system.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace comtrade {

namespace {

constexpr qint64 LargestText = qint64{256} << 20; // bytes of a CFG, HDR or INF; no real one comes near it

[[noreturn]] void Fail(const QString& path, const QString& what)
{
    throw Error(Tr("comtrade", "%1: %2").arg(path, what));
}

// All spellings of an extension, the usual ones first.
QStringList SpellingsOf(const QString& extension)
{
    QStringList spellings{extension.toLower(), extension.toUpper()};
    for (int upper = 1; upper < (1 << extension.size()) - 1; ++upper) {
        QString spelling = extension.toLower();
        for (int i = 0; i < spelling.size(); ++i)
            if ((upper >> i) % 2 == 1)
                spelling[i] = spelling[i].toUpper();
        spellings << spelling;
    }
    return spellings;
}

// The file with this path but for its extension, in whatever case that is; empty if there is none.
QString WithExtension(const QString& base, const QString& extension)
{
    for (const QString& spelling : SpellingsOf(extension))
        if (QFileInfo::exists(base + spelling))
            return base + spelling;
    return QString();
}

// The path without its extension.
QString BaseOf(const QString& path)
{
    return path.chopped(QFileInfo(path).suffix().size());
}

// The same for a name that differs in case, of which there must be only one.
QString InOtherCase(const QString& base, const QString& extension)
{
    const QFileInfo file(base + extension);
    QString found;
    for (const QString& name : file.dir().entryList(QDir::Files)) {
        if (name.compare(file.fileName(), Qt::CaseInsensitive) != 0)
            continue;
        if (!found.isEmpty())
            Fail(base + extension,
                 Tr("comtrade", "there are several files of this name in other cases: '%1' and '%2'")
                     .arg(found, name));
        found = name;
    }
    return found.isEmpty() ? QString() : base.chopped(file.completeBaseName().size() + 1) + found;
}

bool IsUpper(const QString& extension)
{
    return extension == extension.toUpper();
}

void RemarkName(const QString& configurationPath, const QString& path, Findings* forgiven)
{
    const QString extension = QFileInfo(path).suffix();
    const bool isSameBase = BaseOf(path) == BaseOf(configurationPath);
    const bool isSameCase = IsUpper(extension) == IsUpper(QFileInfo(configurationPath).suffix()) &&
                            (IsUpper(extension) || extension == extension.toLower());
    if (path.isEmpty() || (isSameBase && isSameCase))
        return;
    Remark(forgiven, path, 0, 0,
           {Severity::Note, reason::FileName,
            Tr("comtrade", "the name differs from that of '%1' in its case")
                .arg(QFileInfo(configurationPath).fileName()),
            Tr("comtrade", "taken as a file of the same record")});
}

} // namespace

RecordFiles FilesOf(const QString& configurationPath, Findings* forgiven)
{
    QString base = BaseOf(configurationPath);
    RecordFiles files;
    files.data = WithExtension(base, QStringLiteral("dat"));
    if (files.data.isEmpty() && forgiven != nullptr)
        files.data = InOtherCase(base, QStringLiteral("dat"));
    if (files.data.isEmpty())
        Fail(configurationPath, Tr("comtrade", "there is no .dat file beside it"));
    const auto find = [&](const QString& extension) {
        const QString path = WithExtension(base, extension);
        return path.isEmpty() ? WithExtension(BaseOf(files.data), extension) : path;
    };
    files.header = find(QStringLiteral("hdr"));
    files.information = find(QStringLiteral("inf"));
    for (const QString& path : {files.data, files.header, files.information})
        RemarkName(configurationPath, path, forgiven);
    return files;
}

void CheckName(const QString& path)
{
    if (IsRecordFile(path))
        return;
    const QString extension = QFileInfo(path).suffix().toLower();
    for (const QString& other : {QStringLiteral("dat"), QStringLiteral("hdr"), QStringLiteral("inf")}) {
        const QString configuration =
            extension == other ? WithExtension(BaseOf(path), QStringLiteral("cfg")) : QString();
        if (!configuration.isEmpty())
            Fail(path,
                 Tr("comtrade", "is a part of a record; give its configuration '%1'").arg(configuration));
    }
    Fail(path, Tr("comtrade", "is not the .cfg or .cff file of a record"));
}

QByteArray ReadText(const QString& path)
{
    QFile file(path);
    if (!QFileInfo::exists(path))
        Fail(path, Tr("comtrade", "does not exist"));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        Fail(path, Tr("comtrade", "cannot be read: %1").arg(explain::SystemText(file.errorString())));
    if (file.size() > LargestText)
        Fail(path, Tr("comtrade", "is too large for a text of a record"));
    return file.readAll();
}

} // namespace comtrade
