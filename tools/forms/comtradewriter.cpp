#include "forms/comtradewriter.h"

#include "text/texts.h"

#include <QTextCodec>

namespace forms {

namespace {

const QByteArray LineEnd = "\r\n";

[[noreturn]] void Fail(const QFile& file)
{
    const FileFailure failure = FailureOf(file);
    throw FileError(Tr("export", "%1 cannot be written: %2; check the directory and the free space")
                        .arg(file.fileName(), failure.text),
                    failure.code);
}

void WriteWhole(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        Fail(file);
}

// A section ends with its own line: the next mark needs one.
QByteArray Section(const char* kind, const QByteArray& text)
{
    QByteArray section = QByteArray("--- file type: ") + kind + " ---" + LineEnd + text;
    return section.endsWith('\n') ? section : section + LineEnd;
}

QString ConfigurationPlace(const comtrade::Configuration& config, const QString& text,
                           const QByteArray& encoding)
{
    // The line that has the letter says more than the file.
    for (const QString& line : text.split(QStringLiteral("\r\n")))
        if (!QTextCodec::codecForName(encoding)->canEncode(line))
            return line.section(QLatin1Char(','), 0, 1);
    return config.station;
}

} // namespace

QStringList EndingsOf(bool isContainer, const Texts& texts)
{
    if (isContainer)
        return {QStringLiteral(".cff")};
    QStringList endings = {QStringLiteral(".cfg"), QStringLiteral(".dat")};
    if (!texts.header.isEmpty())
        endings << QStringLiteral(".hdr");
    if (!texts.information.isEmpty())
        endings << QStringLiteral(".inf");
    return endings;
}

ComtradeWriter::ComtradeWriter(const QString& base, bool isContainer, const comtrade::Configuration& config_,
                               const QByteArray& encoding, const Texts& texts)
    : config(config_), encoder(config),
      data(base + (isContainer ? QStringLiteral(".cff") : QStringLiteral(".dat")))
{
    CheckTexts(config);
    const QString text = ConfigurationText(config);
    const QByteArray configuration = Encoded(text, encoding, ConfigurationPlace(config, text, encoding));
    if (!data.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        Fail(data);
    if (isContainer) {
        WriteContainerHead(configuration, texts);
        return;
    }
    WriteWhole(base + QStringLiteral(".cfg"), configuration);
    if (!texts.header.isEmpty())
        WriteWhole(base + QStringLiteral(".hdr"), texts.header);
    if (!texts.information.isEmpty())
        WriteWhole(base + QStringLiteral(".inf"), texts.information);
}

void ComtradeWriter::WriteContainerHead(const QByteArray& configuration, const Texts& texts)
{
    Put(Section("CFG", configuration));
    if (!texts.information.isEmpty())
        Put(Section("INF", texts.information));
    if (!texts.header.isEmpty())
        Put(Section("HDR", texts.header));
    QByteArray kind = "DAT " + comtrade::NameOf(config.dataType).toLatin1();
    if (encoder.RecordSize() > 0)
        kind += ": " + QByteArray::number(encoder.RecordSize() * config.SampleCount());
    Put("--- file type: " + kind + " ---" + LineEnd);
}

void ComtradeWriter::Put(const QByteArray& bytes)
{
    if (data.write(bytes) != bytes.size())
        Fail(data);
    size += bytes.size();
}

void ComtradeWriter::Write(const comtrade::Block& block)
{
    Put(encoder.Encode(block));
}

void ComtradeWriter::Finish()
{
    data.close();
}

} // namespace forms
