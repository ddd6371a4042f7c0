#include "zucmtr/host/linefile.h"

#include "text/texts.h"
#include "zucmtr/terminal/command.h"

#include <QFileInfo>

namespace {

QString DirectoryOf(const QString& file)
{
    return file.isEmpty() ? QString() : QFileInfo(file).path();
}

} // namespace

QString LineFileIn(const QStringList& directories)
{
    for (const QString& directory : directories) {
        QString path = directory == QLatin1String(".") ? QStringLiteral("lines.ini")
                                                       : directory + QLatin1String("/lines.ini");
        if (!directory.isEmpty() && QFileInfo(path).isFile())
            return path;
    }
    return QString();
}

LineData LoadLines(const QString& named, const QString& ini, const QString& file)
{
    LineData data;
    data.path = named.isEmpty() ? LineFileIn({DirectoryOf(ini), DirectoryOf(file)}) : named;
    if (data.path.isEmpty())
        return data;
    try {
        data.lines = analysis::ReadLines(data.path);
    } catch (const text::Error& error) {
        QStringList rows = error.Message().split(QLatin1Char('\n'));
        if (!named.isEmpty())
            rows.first().prepend(QStringLiteral("--lines: "));
        throw ConfigurationError(rows);
    }
    return data;
}
