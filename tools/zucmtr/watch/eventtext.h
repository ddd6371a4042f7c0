// An event as a line of text: time, level, recorder, event and what happened, with blanks between. The first
// four have no blanks in them, so that grep, awk and a log's rotation know what they see.
#pragma once

#include <QJsonObject>
#include <QString>

namespace eventtext {

/// "INFO", "WARNING" or "ERROR": nothing to do, something to look at, something is not done until somebody
/// acts.
QString LevelOf(const QJsonObject& event);

/// "2026-03-01T10:00:00.123+03:00 INFO line-7 converted in/a.ZU -> out/NAME". What happened is in the user's
/// language. A recorder without a name is "-".
QString LineOf(const QJsonObject& event);

} // namespace eventtext
