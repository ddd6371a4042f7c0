// Whole conversions: a byte of switches, then the ini lines of the device, the continuation file and the
// first file. No file may appear outside the output directory, and no temporary file may stay after a
// success.
#include "support.h"

#include "resorter/ResorterZuCmtrConv.h"
#include "service/zucmtrconverter.h"

#include <QDir>

#include <stdexcept>

static ZuCmtrDevParamDefault Switches(unsigned int bits)
{
    ZuCmtrDevParamDefault defaults;
    defaults.ComtradeBin = (bits & 1U) != 0;
    defaults.ComtradeCff = (bits & 2U) != 0;
    defaults.ComtradeUtf8 = (bits & 4U) != 0;
    defaults.RenameSignals = (bits & 8U) != 0;
    defaults.AdditionalIndexes = (bits & 16U) != 0;
    defaults.Comtrade1999 = (bits & 32U) != 0;
    defaults.DeleteSource = (bits & 64U) != 0;
    return defaults;
}

static void ConvertTwice(ZuCmtrConverter& converter, const QByteArray& recording)
{
    const QString out = fuzz::Directory() + QStringLiteral("/out");
    for (int round = 0; round < 2; ++round) {
        const QString name = fuzz::Write(QStringLiteral("rec.ZU"), recording);
        try {
            if (converter.ConvertToComtrade(name, out, 0) &&
                !QDir(out).entryList({QStringLiteral("*tmp")}, QDir::Files).isEmpty() &&
                converter.LastError.isEmpty())
                __builtin_trap();
        } catch (const std::out_of_range&) {
            // part of the interface
        }
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Pieces pieces(data, size);
    fuzz::Clean();
    ZuCmtrConverter converter;
    converter.DefaultParam = new ZuCmtrDevParamDefault(Switches(pieces.Byte()));
    const QString ini = fuzz::Write(QStringLiteral("ZuDrv.ini"), "[R]\n" + pieces.Piece());
    const QByteArray continuation = pieces.Piece();
    if (!continuation.isEmpty())
        fuzz::Write(QStringLiteral("rec.Z01"), continuation);
    QDir().mkdir(fuzz::Directory() + QStringLiteral("/out"));
    unsigned int number = 0;
    if (converter.LoadFromIni(ini, QStringLiteral("R"), &number))
        ConvertTwice(converter, pieces.Rest());
    converter.Clear();
    for (const QString& name : QDir(fuzz::Directory()).entryList(QDir::Files)) {
        if (!name.startsWith(QStringLiteral("rec.Z")) && name != QStringLiteral("ZuDrv.ini"))
            __builtin_trap(); // written outside the output directory
    }
    return 0;
}
