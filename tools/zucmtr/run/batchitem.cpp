#include "zucmtr/run/batchitem.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

// In the order of their enumerators.
const char* const StateWords[] = {"converted", "present", "planned", "failed"};
const char* const FateWords[] = {"kept", "removed", "archived"};

} // namespace

void BatchItem::Fail(const char* word, const QString& text)
{
    state = ItemState::Failed;
    reason = word;
    error = text;
}

QJsonObject JsonOf(const BatchItem& item)
{
    const bool hasFailed = item.state == ItemState::Failed;
    QJsonObject object;
    object["file"] = item.recording.path;
    object["status"] = QLatin1String(StateWords[static_cast<int>(item.state)]);
    object["reason"] = hasFailed ? QJsonValue(QLatin1String(item.reason)) : QJsonValue();
    object["error"] = hasFailed ? QJsonValue(item.error) : QJsonValue();
    object["record"] = item.recordName;
    object["directory"] = item.directory;
    object["form"] = item.form;
    object["files"] = QJsonArray::fromStringList(item.files);
    object["sources"] = QJsonArray::fromStringList(item.sources);
    object["notes"] = QJsonArray::fromStringList(item.notes);
    object["verified"] = item.verified;
    object["source"] = QLatin1String(FateWords[static_cast<int>(item.fate)]);
    object["seconds"] = item.seconds;
    if (!item.summary.isEmpty())
        object["summary"] = QJsonDocument::fromJson(item.summary.toUtf8()).object();
    if (!item.loss.isEmpty())
        object["salvaged"] = QJsonDocument::fromJson(item.loss.toUtf8()).object();
    return object;
}
