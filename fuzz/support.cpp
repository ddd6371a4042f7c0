#include "support.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

namespace fuzz {

static void Silence(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {}

const QString& Directory()
{
    static const QTemporaryDir directory(QDir(QStringLiteral("/dev/shm")).exists()
                                             ? QStringLiteral("/dev/shm/zucmtr-fuzz-XXXXXX")
                                             : QDir::tempPath() + QStringLiteral("/zucmtr-fuzz-XXXXXX"));
    static const QString path = [] {
        qInstallMessageHandler(Silence);
        return directory.path();
    }();
    return path;
}

QString Write(const QString& name, const QByteArray& bytes)
{
    const QString path = Directory() + QLatin1Char('/') + name;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write into the fuzzers' directory");
    return path;
}

void Clean()
{
    QDir directory(Directory());
    const QDir::Filters all = QDir::Files | QDir::Dirs | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QFileInfo& entry : directory.entryInfoList(all)) {
        if (entry.isDir() && !entry.isSymLink())
            QDir(entry.filePath()).removeRecursively();
        else
            QFile::remove(entry.filePath());
    }
}

Pieces::Pieces(const uint8_t* data, size_t size)
    : position(reinterpret_cast<const char*>(data)), end(position + size)
{}

uint8_t Pieces::Byte()
{
    return position < end ? static_cast<uint8_t>(*position++) : 0;
}

QByteArray Pieces::Piece()
{
    const int low = Byte();
    const int length = low | Byte() << 8;
    const auto size = static_cast<int>(std::min<std::ptrdiff_t>(length, end - position));
    const QByteArray piece(position, size);
    position += size;
    return piece;
}

QByteArray Pieces::Rest()
{
    const QByteArray rest(position, static_cast<int>(end - position));
    position = end;
    return rest;
}

} // namespace fuzz
