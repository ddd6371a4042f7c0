// A file that an option names to be written. This is the home of the rule: a regular file is replaced when
// the new one is whole, and keeps its permissions and the links that lead to it; anything else (a device, a
// pipe, /dev/stdout, "-") is written to as it stands, and never replaced, removed or given other permissions.
//
//     output::OutputFile file(path);
//     if (!file.Open() || !file.Write(bytes) || !file.Commit())
//         Complain(file.ErrorText());
#pragma once

#include "output/target.h"

#include <QByteArray>
#include <QSaveFile>
#include <QString>

#include <memory>

namespace output {

class OutputFile
{
public:
    explicit OutputFile(const QString& path);

    /// A regular file that was not committed stays unchanged.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Each returns false on failure; ErrorText says why. A pipe is opened only if it has a reader.
    bool Open();
    bool Write(const QByteArray& bytes);

    /// Puts a regular file in its place.
    bool Commit();

    /// Why the last call failed and what to do about it.
    const QString& ErrorText() const { return error; }

private:
    bool OpenFile();
    bool OpenStream();
    bool WriteStream(const QByteArray& bytes);
    bool Fail(const QString& text);
    bool FailFile();

    const Target target;
    std::unique_ptr<QSaveFile> file; // of a regular or new file
    int stream = -1;                 // descriptor of anything else
    QString error;
};

/// Writes the whole at once. False on failure, with the reason in `error`.
bool WriteOutput(const QString& path, const QByteArray& bytes, QString& error);

} // namespace output
