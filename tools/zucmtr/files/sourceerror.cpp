#include "zucmtr/files/sourceerror.h"

#include "text/texts.h"

namespace sourcefiles {

void ThrowChanged(const QString& what)
{
    throw Error(Trouble::Changed, Tr("sources", "%1; the recording is kept, convert it again").arg(what));
}

} // namespace sourcefiles
