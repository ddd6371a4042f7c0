// A file that cannot be written.
#pragma once

#include "text/error.h"

#include <QFile>

namespace forms {

class FileError : public text::Error
{
public:
    FileError(const QString& sentence, int code_) : text::Error(sentence), code(code_) {}
    const int code; ///< errno
};

/// Why the last call for a file failed; to be asked at once.
struct FileFailure
{
    int code; ///< errno
    QString text;
};
FileFailure FailureOf(const QFile& file);

} // namespace forms
