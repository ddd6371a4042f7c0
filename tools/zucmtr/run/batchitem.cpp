#include "zucmtr/run/batchitem.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

const char* StateKey(ItemState state)
{
    switch (state) {
    case ItemState::Converted:
        return "converted";
    case ItemState::Present:
        return "present";
    case ItemState::Planned:
        return "planned";
    case ItemState::Failed:
        break;
    }
    return "failed";
}

const char* FateKey(SourceFate fate)
{
    switch (fate) {
    case SourceFate::Kept:
        return "kept";
    case SourceFate::Removed:
        return "removed";
    case SourceFate::Archived:
        break;
    }
    return "archived";
}

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
    object["status"] = QLatin1String(StateKey(item.state));
    object["reason"] = hasFailed ? QJsonValue(QLatin1String(item.reason)) : QJsonValue();
    object["error"] = hasFailed ? QJsonValue(item.error) : QJsonValue();
    object["record"] = item.recordName;
    object["directory"] = item.directory;
    object["files"] = QJsonArray::fromStringList(item.files);
    object["sources"] = QJsonArray::fromStringList(item.sources);
    object["notes"] = QJsonArray::fromStringList(item.notes);
    object["verified"] = item.verified;
    object["source"] = QLatin1String(FateKey(item.fate));
    object["seconds"] = item.seconds;
    if (!item.summary.isEmpty())
        object["summary"] = QJsonDocument::fromJson(item.summary.toUtf8()).object();
    return object;
}
