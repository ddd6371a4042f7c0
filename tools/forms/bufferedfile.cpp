#include "forms/bufferedfile.h"

#include "text/texts.h"

#include <algorithm>

namespace forms {

BufferedFile::BufferedFile(const QString& path) : file(path), buffer(size_t{256} << 10U)
{
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        Fail();
}

char* BufferedFile::Room(size_t bytes)
{
    if (buffer.size() - used < bytes) {
        Flush();
        if (buffer.size() < bytes)
            buffer.resize(bytes);
    }
    return buffer.data() + used;
}

void BufferedFile::Write(const QByteArray& bytes)
{
    char* to = Room(static_cast<size_t>(bytes.size()));
    TakeUntil(std::copy(bytes.begin(), bytes.end(), to));
}

void BufferedFile::Finish()
{
    Flush();
    file.close();
    if (file.error() != QFile::NoError)
        Fail();
}

void BufferedFile::Flush()
{
    const auto size = static_cast<qint64>(used);
    if (file.write(buffer.data(), size) != size)
        Fail();
    used = 0;
}

void BufferedFile::Fail() const
{
    const FileFailure failure = FailureOf(file);
    throw FileError(Tr("forms", "'%1' cannot be written: %2").arg(file.fileName(), failure.text),
                    failure.code);
}

} // namespace forms
