#include "devicesection.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

SectionText SectionText::Whole()
{
    SectionText section;
    section.Set("Энергосистема", "ЭС").Set("Субъект", "МЭС").Set("Объект", "ПС").Set("Источник", "РАС");
    section.Set("Версия ПО", "3.1").Set("Версия аппаратной части", "1.7").Set("Модель", "MK7.11");
    section.Set("Версия ZU", "2").Set("Удалять исходные", "1").Set("Время ожидания", "500");
    section.Set("Тип Comtrade CFF", "1").Set("Тип Comtrade BIN", "1").Set("Кодировка Comtrade UTF8", "1");
    section.Set("Переименовать сигналы Comtrade", "1").Set("Идентификатор Cim", "7f3a");
    section.Set("Номер шкафа", "12").Set("Серийный номер", "0042").Set("Доп.индексы для имен сигналов", "1");
    return section.Set("Тип Comtrade 1999", "1");
}

SectionText SectionText::Other()
{
    SectionText section;
    section.Set("Энергосистема", "e").Set("Субъект", "s").Set("Объект", "o").Set("Источник", "i");
    section.Set("Версия ПО", "9").Set("Версия аппаратной части", "8").Set("Модель", "m");
    section.Set("Версия ZU", "1").Set("Удалять исходные", "0").Set("Время ожидания", "700");
    section.Set("Тип Comtrade CFF", "0").Set("Тип Comtrade BIN", "0").Set("Кодировка Comtrade UTF8", "0");
    section.Set("Переименовать сигналы Comtrade", "0").Set("Идентификатор Cim", "c");
    section.Set("Номер шкафа", "n").Set("Серийный номер", "r").Set("Доп.индексы для имен сигналов", "0");
    return section.Set("Тип Comtrade 1999", "0");
}

SectionText& SectionText::Set(const QString& key, const QString& value)
{
    for (auto& line : lines) {
        if (line.first == key) {
            line.second = value;
            return *this;
        }
    }
    lines.emplace_back(key, value);
    return *this;
}

SectionText& SectionText::Drop(const QString& key)
{
    lines.erase(
        std::remove_if(lines.begin(), lines.end(), [&](const auto& line) { return line.first == key; }),
        lines.end());
    return *this;
}

QByteArray SectionText::Bytes() const
{
    QString text = QStringLiteral("[S]\n");
    for (const auto& line : lines)
        text += line.first + QLatin1Char('=') + line.second + QLatin1Char('\n');
    return text.toUtf8();
}

SectionLoader::~SectionLoader()
{
    zu::LogFilePath = QString();
    QSettingsRu::Clear();
}

QString SectionLoader::Prepare(const SectionText& section)
{
    ++loads;
    zu::LogFilePath = directory.Path(QStringLiteral("log%1").arg(loads));
    return directory.Write(QStringLiteral("%1.ini").arg(loads), section.Bytes());
}

bool SectionLoader::LoadParam(ZuCmtrDevParamDefault& param, const SectionText& section, bool useDefaults)
{
    return param.LoadFromIniDef(Prepare(section), QStringLiteral("S"), useDefaults);
}

bool SectionLoader::LoadDevice(ZuCmtrDevParam& device, const SectionText& section)
{
    return device.LoadFromIni(Prepare(section), QStringLiteral("S"));
}

QStringList SectionLoader::Log() const
{
    return ReadLines(zu::LogFilePath);
}

QString SectionLoader::LogLine(const QString& key) const
{
    const QStringList lines = Log().filter(
        QRegularExpression(QLatin1Char('^') + QRegularExpression::escape(key) + QLatin1Char(':')));
    return lines.isEmpty() ? QString() : lines.first();
}
