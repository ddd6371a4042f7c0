#include "batchitem.h"

#include <QJsonArray>

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

QJsonObject JsonOf(const BatchItem& item)
{
    QJsonObject object;
    object["file"] = item.recording.path;
    object["status"] = QLatin1String(StateKey(item.state));
    object["error"] = item.state == ItemState::Failed ? QJsonValue(item.error) : QJsonValue();
    object["record"] = item.recordName;
    object["directory"] = item.directory;
    object["files"] = QJsonArray::fromStringList(item.files);
    object["sources"] = QJsonArray::fromStringList(item.sources);
    object["notes"] = QJsonArray::fromStringList(item.notes);
    object["verified"] = item.verified;
    object["source"] = QLatin1String(FateKey(item.fate));
    object["seconds"] = item.seconds;
    return object;
}
