// A file whose content nobody keeps, with a path that others can open for writing and reading. It is in
// memory and has no name in any directory, so that nothing of it remains however the program ends.
#pragma once

#include <QString>
#include <QTemporaryFile>

namespace output {

class ScratchFile
{
public:
    /// An empty file. Where the system has none without a name, as without /proc, it is one in the directory
    /// for temporary files, removed with the object.
    ScratchFile();
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    /// Valid in this process while the object lives; empty if no file could be made.
    const QString& Path() const { return path; }

private:
    int memory = -1; // descriptor
    QTemporaryFile named;
    QString path;
};

} // namespace output
