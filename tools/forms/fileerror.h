// A file that cannot be written.
#pragma once

#include "text/error.h"

#include <QFile>

#include <cerrno>

namespace forms {

class FileError : public text::Error
{
public:
    FileError(const QString& sentence, int code_) : text::Error(sentence), code(code_) {}

    /// By what Qt knows of the file's error: whether there is no room left.
    FileError(const QString& sentence, const QFile& file)
        : FileError(sentence, file.error() == QFile::ResourceError ? ENOSPC : EIO)
    {}

    const int code; ///< errno
};

} // namespace forms
