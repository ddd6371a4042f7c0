#include "forms/rawdata.h"

#include "comtrade/recordfiles.h"
#include "explain/system.h"
#include "forms/dataencoder.h"
#include "text/texts.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace forms {

namespace {

constexpr qint64 Piece = qint64{1} << 18;

// A part of a file, piece by piece.
class Reader
{
public:
    explicit Reader(const RawData& data) : file(data.path), left(data.bytes)
    {
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !file.seek(data.offset))
            Fail();
        buffer.resize(static_cast<int>(std::min(Piece, std::max<qint64>(left, 1))));
    }

    // The next bytes; none at the end.
    QByteArray Next()
    {
        const qint64 wanted = std::min<qint64>(buffer.size(), left);
        for (qint64 count = 0; count < wanted;) {
            const qint64 more = file.read(buffer.data() + count, wanted - count);
            if (more <= 0)
                Fail();
            count += more;
        }
        left -= wanted;
        return QByteArray::fromRawData(buffer.constData(), static_cast<int>(wanted));
    }

private:
    [[noreturn]] void Fail() const
    {
        throw comtrade::Error(Tr("comtrade", "%1: cannot be read: %2")
                                  .arg(file.fileName(), explain::SystemText(file.errorString())));
    }

    QFile file;
    qint64 left;
    QByteArray buffer;
};

} // namespace

std::optional<RawData> RawDataOf(const QString& path, const comtrade::Record& record)
{
    const comtrade::Configuration& config = record.Config();
    if (config.dataType == comtrade::DataType::Ascii || !record.Forgiven().IsEmpty())
        return std::nullopt;
    RawData data;
    data.bytes = DataEncoder(config).RecordSize() * config.SampleCount();
    if (path.endsWith(QLatin1String(".cff"), Qt::CaseInsensitive))
        return std::nullopt;
    comtrade::Findings findings;
    data.path = comtrade::FilesOf(path, &findings).data;
    const qint64 stored = QFileInfo(data.path).size();
    return stored == data.bytes && findings.IsEmpty() ? std::optional<RawData>(data) : std::nullopt;
}

void ReadRaw(const RawData& data, const std::function<void(const QByteArray&)>& take)
{
    Reader reader(data);
    for (QByteArray piece = reader.Next(); !piece.isEmpty(); piece = reader.Next())
        take(piece);
}

bool AreSame(const RawData& one, const RawData& other)
{
    Reader first(one);
    Reader second(other);
    for (QByteArray piece = first.Next(); !piece.isEmpty(); piece = first.Next())
        if (second.Next() != piece)
            return false;
    return one.bytes == other.bytes;
}

} // namespace forms
