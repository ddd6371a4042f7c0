#include "base/log.h"

#include "base/codecs.h"
#include "base/permissions.h"

#include <QDebug>

// Appends lines in codec. The group may read and write a file that is created here.
static void AppendToLog(const std::vector<QString>& lines, QTextCodec* codec)
{
    QFile file(zu::LogFilePath);
    const bool existed = file.exists();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        qDebug().noquote() << QStringLiteral("Ошибка записи в лог");
        return;
    }
    if (file.seek(file.size())) {
        QString text;
        for (const QString& line : lines)
            text += line + QLatin1Char('\n');
        file.write(codec->fromUnicode(text));
    }
    file.flush();
    file.close();
    if (!existed)
        zu::AddPermissions(zu::LogFilePath, zu::GroupAccess);
}

void zu::WriteToLog(const QString& text)
{
    AppendToLog({text}, QTextCodec::codecForLocale());
}

void zu::WriteToLog(const std::vector<QString>& lines)
{
    AppendToLog(lines, CodecIni);
}
