// What 'zucmtr watch' prints: one JSON object per line for each event; docs/json.md lists them.
#pragma once

#include <QJsonObject>

namespace watchevents {

/// Prints an event with these keys and the time.
void Emit(const char* event, QJsonObject object);

} // namespace watchevents
