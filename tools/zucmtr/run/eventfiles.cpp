#include "zucmtr/run/eventfiles.h"

#include "output/outputfile.h"
#include "text/numbers.h"
#include "zucmtr/files/systemfile.h"

#include <QJsonDocument>

EventTexts EventTextsOf(const analysis::Question& question, const QString& shown)
{
    const analysis::Summary summary = analysis::Summarise(question);
    EventTexts texts;
    QJsonObject object = analysis::JsonOf(summary);
    object["file"] = shown;
    texts.json = text::JsonText(QJsonDocument(object));
    QStringList lines = {shown};
    for (const QString& sentence : analysis::SentencesOf(summary))
        lines << QStringLiteral("  ") + sentence;
    lines << QString() << analysis::TableOf(summary);
    texts.text = (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
    texts.summary = QString::fromUtf8(
        text::JsonText(QJsonDocument(analysis::ShortJsonOf(summary)), QJsonDocument::Compact));
    return texts;
}

QStringList EventFilesOf(const QString& recordName)
{
    return {recordName + QStringLiteral(".events.json"), recordName + QStringLiteral(".events.txt")};
}

QString ObstacleToEvents(const QString& directory, const QString& recordName)
{
    for (const QString& name : EventFilesOf(recordName)) {
        QString path = directory + QLatin1Char('/') + name;
        systemfile::Identity there;
        if (systemfile::Identify(path, there, systemfile::Links::Kept) == 0 && !there.IsRegular())
            return path;
    }
    return QString();
}

bool WriteEventFiles(const QString& directory, const QString& recordName, const EventTexts& texts,
                     QString& error)
{
    const QStringList names = EventFilesOf(recordName);
    const QString path = directory + QLatin1Char('/');
    return output::WriteOutput(path + names[0], texts.json, error) &&
           output::WriteOutput(path + names[1], texts.text, error);
}
