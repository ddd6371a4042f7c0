#include "output/scratchfile.h"

#include <QDir>

#include <sys/mman.h>
#include <unistd.h>

namespace output {

ScratchFile::ScratchFile() : memory(memfd_create("zucmtr", MFD_CLOEXEC))
{
    path = QStringLiteral("/proc/self/fd/%1").arg(memory);
    if (memory >= 0 && access(path.toLatin1().constData(), W_OK) == 0)
        return;
    const QString directory = QDir::tempPath(); // empty if TMPDIR does not exist
    named.setFileTemplate(directory + QLatin1String("/zucmtr.XXXXXX"));
    path = !directory.isEmpty() && named.open() ? named.fileName() : QString();
    named.close();
}

ScratchFile::~ScratchFile()
{
    if (memory >= 0)
        close(memory);
}

} // namespace output
