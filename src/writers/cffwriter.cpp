// The CFF file: the four pieces of a COMTRADE record joined in one.
#include "service/zucmtrconverter.h"

#include <QFile>
#include <QTextCodec>

#include <algorithm>
#include <array>
#include <memory>

const QString ZuCmtrConverter::SecNameCFG(QStringLiteral("--- file type: CFG ---"));
const QString ZuCmtrConverter::SecNameINF(QStringLiteral("--- file type: INF ---"));
const QString ZuCmtrConverter::SecNameHDR(QStringLiteral("--- file type: HDR ---"));
const QString ZuCmtrConverter::SecNameDATa(QStringLiteral("--- file type: DAT ASCII ---"));
const QString ZuCmtrConverter::SecNameDATb(QStringLiteral("--- file type: DAT BINARY: %1 ---"));
const qint32 ZuCmtrConverter::SecNameLen = static_cast<qint32>(ZuCmtrConverter::SecNameHDR.length());

namespace {

using Buffer = std::array<char, 262144>; // too large for QFile to copy it once more

void FlushAndClose(QFile& file)
{
    if (file.isOpen()) {
        file.flush();
        file.close();
    }
}

// A piece with the mark before it, of which size bytes are written, its line end among them.
struct Section
{
    const QString& mark;
    qint64 size;
    QFile& piece;
};

bool WriteSection(ZuCmtrConverter& converter, QFile& cff, const Section& section, const QTextCodec* codec,
                  Buffer& buffer)
{
    const QByteArray mark = codec->fromUnicode(section.mark) + "\r\n";
    return cff.write(mark.constData(), section.size) == section.size &&
           converter.fileBinDataCopy(&cff, &section.piece, buffer.data(), int(buffer.size()));
}

bool WriteSections(ZuCmtrConverter& converter, ZuCmtrDevParam* dev, const QTextCodec* codec)
{
    const qint64 markSize = ZuCmtrConverter::SecNameLen + 2; // of the first three
    QString dataMark = ZuCmtrConverter::SecNameDATa;
    if (dev->ComtradeBin)
        dataMark = ZuCmtrConverter::SecNameDATb.arg(dev->DatBytes);
    const auto buffer = std::make_unique<Buffer>();
    const std::array<Section, 4> sections = {{
        {ZuCmtrConverter::SecNameCFG, markSize, dev->FileCfg},
        {ZuCmtrConverter::SecNameINF, markSize, dev->FileInf},
        {ZuCmtrConverter::SecNameHDR, markSize, dev->FileHdr},
        {dataMark, dataMark.length() + 2, dev->FileDat},
    }};
    return std::all_of(sections.begin(), sections.end(), [&](const Section& section) {
        return WriteSection(converter, dev->FileCff, section, codec, *buffer);
    });
}

} // namespace

bool ZuCmtrConverter::fileBinDataCopy(QFile* to, QFile* from, char* buffer, int bufferSize)
{
    if (bufferSize < 1 || buffer == nullptr)
        return false;
    const qint64 size = from->size();
    qint64 copied = 0;
    do {
        const qint64 count = from->read(buffer, bufferSize);
        if (count < 0 || to->write(buffer, count) != count)
            return false;
        if (count == 0)
            break; // the file became shorter
        copied += count;
    } while (copied < size);
    return copied == size;
}

bool ZuCmtrConverter::WriteCff(ZuCmtrDevParam* dev)
{
    const auto mark = [this](const char* text) {
        const QMutexLocker lock(&Mutex); // devices of other threads leave their marks here too
        LastError = QLatin1String(text);
    };
    const std::array<QFile*, 4> pieces = {&dev->FileCfg, &dev->FileDat, &dev->FileHdr, &dev->FileInf};

    mark("-1");
    for (const QFile* piece : pieces) {
        if (!QFile::exists(piece->fileName()))
            return false;
    }
    mark("0");
    for (const QFile* piece : pieces) {
        if (piece->isOpen())
            return false;
    }

    bool written = true;
    for (QFile* piece : pieces)
        written = written && piece->open(QIODevice::ReadOnly);
    written = written && dev->FileCff.open(QIODevice::WriteOnly) &&
              WriteSections(*this, dev, dev->ComtradeUtf8 ? codec_UTF8 : codec_CP1251);
    for (QFile* piece : pieces)
        FlushAndClose(*piece);
    FlushAndClose(dev->FileCff);
    if (!written)
        return false;
    for (QFile* piece : pieces)
        piece->remove();
    return true;
}
