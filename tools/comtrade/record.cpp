// Opening a record: separate files, or the sections of a container.
#include "comtrade/record.h"

#include "comtrade/datareader.h"
#include "comtrade/mark.h"
#include "comtrade/text.h"
#include "explain/system.h"
#include "text/texts.h"

#include <QFile>
#include <QFileInfo>

#include <optional>

namespace comtrade {

namespace {

constexpr qint64 LargestText = qint64{256} << 20; // bytes of a CFG, HDR or INF; no real one comes near it
constexpr qint64 LineStep = 4096;                 // bytes of a line read at a time

[[noreturn]] void Fail(const QString& path, const QString& what)
{
    throw Error(Tr("comtrade", "%1: %2").arg(path, what));
}

void Open(QFile& file)
{
    if (!QFileInfo::exists(file.fileName()))
        Fail(file.fileName(), Tr("comtrade", "does not exist"));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        Fail(file.fileName(),
             Tr("comtrade", "cannot be read: %1").arg(explain::SystemText(file.errorString())));
}

QByteArray ReadText(const QString& path)
{
    QFile file(path);
    Open(file);
    if (file.size() > LargestText)
        Fail(path, Tr("comtrade", "is too large for a text of a record"));
    return file.readAll();
}

// The path of a piece beside the configuration, whatever the case of its extension; empty if there is none.
QString PieceBeside(const QString& configurationPath, const QString& extension)
{
    const QString base = configurationPath.left(configurationPath.size() - extension.size());
    for (const QString& spelling :
         {extension, extension.toUpper(), extension.at(0).toUpper() + extension.mid(1)}) {
        if (QFileInfo::exists(base + spelling))
            return base + spelling;
    }
    return QString();
}

// Empty if there is no such piece.
QByteArray TextBeside(const QString& configurationPath, const QString& extension)
{
    const QString path = PieceBeside(configurationPath, extension);
    return path.isEmpty() ? QByteArray() : ReadText(path);
}

} // namespace

bool IsRecordFile(const QString& path)
{
    return path.endsWith(QLatin1String(".cfg"), Qt::CaseInsensitive) ||
           path.endsWith(QLatin1String(".cff"), Qt::CaseInsensitive);
}

Record::Record(const QString& path, const ReadingOptions& options_) : options(options_)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == QLatin1String("cff"))
        OpenContainer(path);
    else if (extension == QLatin1String("cfg"))
        OpenPieces(path);
    else
        Fail(path, Tr("comtrade", "is not the .cfg or .cff file of a record"));
}

Record::~Record() = default;

void Record::OpenPieces(const QString& path)
{
    configuration = ParseConfiguration(DecodedText(ReadText(path)), path,
                                       options.isStrict ? nullptr : &findings, 1, &places);
    const QString dataPath = PieceBeside(path, QStringLiteral("dat"));
    if (dataPath.isEmpty())
        Fail(path, Tr("comtrade", "there is no .dat file beside it"));
    header = TextBeside(path, QStringLiteral("hdr"));
    information = TextBeside(path, QStringLiteral("inf"));
    data =
        std::make_unique<DataReader>(dataPath, 0, -1, configuration, options.isStrict ? nullptr : &findings);
}

void Record::OpenContainer(const QString& path)
{
    QFile file(path);
    Open(file);
    QByteArray configurationText;
    qint64 configurationLine = 1;
    qint64 lineNumber = 0;
    QByteArray ignored;
    QByteArray* section = nullptr;
    std::optional<qint64> dataOffset;
    qint64 dataBytes = -1;
    qint64 textBytes = 0;
    bool atLineStart = true;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine(LineStep); // a longer line comes in pieces
        const std::optional<Mark> mark = atLineStart ? MarkOf(line) : std::nullopt;
        lineNumber += atLineStart ? 1 : 0;
        atLineStart = line.endsWith('\n');
        if (!mark) {
            textBytes += line.size();
            if (section == nullptr)
                Fail(path, Tr("comtrade", "does not start with a section mark"));
            if (textBytes > LargestText)
                Fail(path, Tr("comtrade", "has texts that are too large for a record"));
            section->append(line);
        } else if (mark->kind == QLatin1String("DAT")) {
            dataOffset = file.pos();
            dataBytes = mark->dataBytes;
            if (dataBytes < 0)
                break; // ASCII data go to the end
            if (dataBytes > file.size() - file.pos())
                Fail(path, Tr("comtrade", "holds %1 bytes of data where its mark says %2")
                               .arg(file.size() - file.pos())
                               .arg(dataBytes));
            file.seek(file.pos() + dataBytes);
            section = &ignored;
        } else {
            if (mark->kind == QLatin1String("CFG"))
                configurationLine = lineNumber + 1;
            section = mark->kind == QLatin1String("CFG")   ? &configurationText
                      : mark->kind == QLatin1String("HDR") ? &header
                      : mark->kind == QLatin1String("INF") ? &information
                                                           : &ignored;
        }
    }
    if (configurationText.isEmpty())
        Fail(path, Tr("comtrade", "has no CFG section"));
    configuration = ParseConfiguration(DecodedText(configurationText), path,
                                       options.isStrict ? nullptr : &findings, configurationLine, &places);
    if (!dataOffset)
        Fail(path, Tr("comtrade", "has no DAT section"));
    data = std::make_unique<DataReader>(path, *dataOffset, dataBytes, configuration,
                                        options.isStrict ? nullptr : &findings);
}

bool Record::Next(Row& row)
{
    return data->Next(row);
}

bool Record::Next(Block& block)
{
    return data->Next(block);
}

} // namespace comtrade
