#include "support/device.h"

#include "config/deviceinikeys.h"

#include <QDir>

QByteArray DefaultsSection()
{
    const QMap<QString, QString> values = {{"Версия ПО", "1.0"},      {"Версия аппаратной части", "2.0"},
                                           {"Тип Comtrade BIN", "0"}, {"Кодировка Comtrade UTF8", "0"},
                                           {"Идентификатор Cim", ""}, {"Номер шкафа", ""},
                                           {"Серийный номер", ""}};
    return DefaultsLines("Defaults", values).join('\n').toUtf8() + '\n';
}

TestStation::TestStation(const QByteArray& deviceLines)
{
    const QString ini =
        directory.Write(QStringLiteral("ZuDrv.ini"), DefaultsSection() + "[Device]\n" + deviceLines + "\n");
    directory.MakeDirectory(QStringLiteral("out"));
    unsigned int number = 0;
    if (!converter.LoadFromIniDefault(ini, QStringLiteral("Defaults")) ||
        !converter.LoadFromIni(ini, QStringLiteral("Device"), &number))
        qFatal("the test device does not load");
}

TestStation::~TestStation()
{
    converter.Clear();
}

bool TestStation::Convert(const QByteArray& recorderFile, const QString& name)
{
    return converter.ConvertToComtrade(directory.Write(name, recorderFile),
                                       directory.Path(QStringLiteral("out")), 0);
}

QByteArray TestStation::Output(const QString& extension) const
{
    const QDir out(directory.Path(QStringLiteral("out")));
    const QStringList names = out.entryList({QStringLiteral("*.") + extension}, QDir::Files);
    if (names.size() != 1)
        qFatal("not exactly one .%s file", qPrintable(extension));
    return ReadBytes(out.filePath(names.first()));
}
