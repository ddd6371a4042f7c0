#include "verify/leftout.h"

#include "recording/zufileformat.h"
#include "text/reasons.h"

#include <cstring>

namespace verify {

namespace {

// Whether the library's text shows that it reached the content of the file at all.
bool IsOfContent(const QString& failure)
{
    return !failure.startsWith(QStringLiteral("Файл не найден")) &&
           !failure.startsWith(QStringLiteral("Ошибка открытия файла")) &&
           std::strcmp(reason::OfLibrary(failure, reason::NotConverted), reason::OutOfMemory) != 0;
}

} // namespace

bool IsRightlyLeftOut(const QString& firstFile, const QString& continuation)
{
    ZuFileFormat next;
    if (!next.Load(continuation))
        return IsOfContent(next.ErrorText);
    ZuFileFormat first;
    return first.Load(firstFile) && !next.CompareHeader(&first);
}

} // namespace verify
