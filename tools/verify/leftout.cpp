#include "verify/leftout.h"

#include "recording/zufileformat.h"
#include "zucmtr/reasons.h"

#include <cstring>

namespace verify {

bool IsRightlyLeftOut(const QString& firstFile, const QString& continuation)
{
    ZuFileFormat next;
    if (!next.Load(continuation))
        return std::strcmp(reason::OfLibrary(next.ErrorText, reason::NotConverted), reason::OutOfMemory) != 0;
    ZuFileFormat first;
    return first.Load(firstFile) && !next.CompareHeader(&first);
}

} // namespace verify
