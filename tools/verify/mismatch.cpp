#include "verify/mismatch.h"

#include "text/texts.h"

namespace verify {

void Differ(const QString& place, const QString& found, const QString& expected)
{
    // All values at once: a name may hold a "%1".
    throw Mismatch(Tr("verify", "%1: the record says '%2', the recording '%3'").arg(place, found, expected));
}

void ExpectSame(const QString& place, const QString& found, const QString& expected)
{
    if (found != expected)
        Differ(place, found, expected);
}

void ExpectSame(const QString& place, qint64 found, qint64 expected)
{
    if (found != expected)
        Differ(place, QString::number(found), QString::number(expected));
}

} // namespace verify
