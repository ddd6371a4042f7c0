// A file for what nobody keeps, under a path that others may open to write and to read. It is in memory and
// has no name in any directory, so that nothing stays of it however the program ends.
#pragma once

#include <QString>
#include <QTemporaryFile>

namespace output {

class ScratchFile
{
public:
    /// An empty file. Where the system has none without a name, as without /proc, it is one in the directory
    /// for temporary files, and goes with the object.
    ScratchFile();
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    /// Valid in this process as long as the object lives; empty if no file could be made.
    const QString& Path() const { return path; }

private:
    int memory = -1; // descriptor
    QTemporaryFile named;
    QString path;
};

} // namespace output
