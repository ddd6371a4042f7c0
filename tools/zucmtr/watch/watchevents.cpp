#include "zucmtr/watch/watchevents.h"

#include "zucmtr/terminal/console.h"

#include <QDateTime>

namespace watchevents {

void Emit(const char* event, QJsonObject object)
{
    const QDateTime now = QDateTime::currentDateTime();
    object["time"] = now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODateWithMs);
    object["event"] = QLatin1String(event);
    PrintJson(object);
}

} // namespace watchevents
