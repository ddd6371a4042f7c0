#include "base/log.h"

#include "base/codecs.h"
#include "base/permissions.h"

#include <QDebug>
#include <QTextStream>

// Appends lines in codec, or in the locale's encoding if it is null. The group may read and write a file that
// is created here.
static void AppendToLog(const std::vector<QString>& lines, QTextCodec* codec)
{
    QFile file(zu::LogFilePath);
    const bool existed = file.exists();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        qDebug().noquote() << QStringLiteral("Ошибка записи в лог");
        return;
    }
    if (file.seek(file.size())) {
        QTextStream stream(&file);
        if (codec != nullptr)
            stream.setCodec(codec);
        for (const QString& line : lines)
            stream << line << "\n";
    }
    file.flush();
    file.close();
    if (!existed)
        zu::AddPermissions(zu::LogFilePath, zu::GroupAccess);
}

void zu::WriteToLog(const QString& text)
{
    AppendToLog({text}, nullptr);
}

void zu::WriteToLog(const std::vector<QString>& lines)
{
    AppendToLog(lines, CodecIni);
}
