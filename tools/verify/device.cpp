#include "verify/device.h"

#include "base/codecs.h"
#include "base/log.h"
#include "config/QSettingsRu.h"
#include "device/zucmtrdevparam.h"
#include "output/scratchfile.h"
#include "text/texts.h"
#include "verify/knownlines.h"
#include "verify/mismatch.h"

#include <QTextCodec>

namespace verify {

namespace {

// The converter has logged this load already; a second log would only repeat it. It goes to a file, as Qt
// warns about every device that is opened to append, the null device included.
class QuietLog
{
public:
    QuietLog() : before(zu::LogFilePath) { zu::LogFilePath = scratch.Path(); }
    ~QuietLog() { zu::LogFilePath = before; }
    QuietLog(const QuietLog&) = delete;
    QuietLog& operator=(const QuietLog&) = delete;

private:
    const output::ScratchFile scratch;
    const QString before;
};

} // namespace

Device::Device(const QString& ini, const QString& defaults, const QString& section)
    : param(std::make_unique<ZuCmtrDevParam>()), known(std::make_unique<KnownTexts>())
{
    const QuietLog quiet;
    ZuCmtrDevParamDefault defaultParam;
    bool loaded = defaultParam.LoadFromIniDef(ini, defaults, false);
    param->SetDefaultParam(&defaultParam);
    loaded = loaded && param->LoadFromIni(ini, section);
    if (loaded)
        param->PreResort();        // the converter keeps a device whose dictionary has no order
    QSettingsRu::ClearOneKey(ini); // the next device sees the file as it is then
    if (loaded)
        return;
    param->Clear();
    throw Unreadable(Tr("verify", "the sections [%1] and [%2] of '%3' do not load for the verification")
                         .arg(defaults, section, ini));
}

Device::~Device()
{
    param->Clear();
}

bool Device::DeletesSources() const
{
    return param->DeleteSource;
}

const QTextCodec& Device::Codec() const
{
    return param->ComtradeUtf8 ? *zu::CodecUtf8 : *zu::CodecCP1251;
}

QString Device::AsWritten(const QString& text) const
{
    return Codec().toUnicode(Codec().fromUnicode(text));
}

QString Device::Form() const
{
    const QStringList words = {
        param->ComtradeCff ? QStringLiteral("cff") : QStringLiteral("cfg"),
        param->Comtrade1999 ? QStringLiteral("1999") : QStringLiteral("2013"),
        param->ComtradeBin ? QStringLiteral("binary") : QStringLiteral("ascii"),
        param->ComtradeUtf8 ? QStringLiteral("utf8") : QStringLiteral("cp1251"),
    };
    return words.join(QLatin1Char(' '));
}

QStringList Device::RecordFiles(const QString& recordName) const
{
    const auto named = [&](const char* extension) { return recordName + QLatin1String(extension); };
    if (param->ComtradeCff)
        return {named(".cff")};
    if (param->Comtrade1999)
        return {named(".cfg"), named(".dat")};
    return {named(".cfg"), named(".dat"), named(".hdr"), named(".inf")};
}

} // namespace verify
