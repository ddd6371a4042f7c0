// The log file: each call opens, appends and closes it.
#include "service/zucmtrconverter.h"

#include "config/GlobalFunction.h"

#include <QDebug>
#include <QFile>
#include <QTextStream>

// Appends lines in codec, or in the locale's encoding if it is null. A file made here is opened to its group.
static void AppendToLog(const std::vector<QString>& lines, QTextCodec* codec)
{
    QFile file(ZuCmtrConverter::LogFilePath);
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
        GlobalFunction::AddFileGrpPermissions(ZuCmtrConverter::LogFilePath);
}

void ZuCmtrConverter::WriteToLog(const QString& text)
{
    const std::vector<QString> line(1, text);
    AppendToLog(line, nullptr);
}

void ZuCmtrConverter::WriteToLog(std::vector<QString> lines) // NOLINT(performance-unnecessary-value-param)
{
    AppendToLog(lines, codecIni);
}
