#include "support/device.h"

#include <QDir>

QByteArray DefaultsSection()
{
    return "[Defaults]\n"
           "Энергосистема=PowerSystem\n"
           "Субъект=Subject\n"
           "Объект=Object\n"
           "Источник=Source\n"
           "Версия ПО=1.0\n"
           "Версия аппаратной части=2.0\n"
           "Модель=MK7.06\n"
           "Версия ZU=1\n"
           "Удалять исходные=0\n"
           "Время ожидания=60000\n"
           "Тип Comtrade CFF=0\n"
           "Тип Comtrade BIN=0\n"
           "Кодировка Comtrade UTF8=0\n"
           "Переименовать сигналы Comtrade=1\n"
           "Идентификатор Cim=\n"
           "Номер шкафа=\n"
           "Серийный номер=\n"
           "Доп.индексы для имен сигналов=0\n"
           "Тип Comtrade 1999=0\n";
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
