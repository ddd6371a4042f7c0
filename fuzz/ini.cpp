// Ini text through defaults, device, dictionary and its order.
#include "support.h"

#include "service/zucmtrconverter.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const QString ini = fuzz::Write(QStringLiteral("ZuDrv.ini"), bytes);
    ZuCmtrConverter converter;
    unsigned int number = 0;
    converter.LoadFromIniDefault(ini, QStringLiteral("D"));
    converter.LoadFromIni(ini, QStringLiteral("R"), &number);
    converter.LoadFromIni(ini, QStringLiteral("D"), &number);
    converter.Clear();
    return 0;
}
