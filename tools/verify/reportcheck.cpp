// The fault report of a record: 53 lines.
#include "device/zucmtrdevparam.h"
#include "recording/zufileformat.h"
#include "verify/checks.h"
#include "verify/device.h"
#include "verify/source.h"
#include "verify/stamp.h"
#include "verify/textwalk.h"

namespace verify {

namespace {

QString PairLine(const char* label, const QString& value)
{
    return QString::fromUtf8(label).leftJustified(40, QLatin1Char(' ')) + value;
}

void CheckOpening(TextWalk& text, const Source& source)
{
    const ZuCmtrDevParam& param = source.Owner().Param();
    const QString separator(58, QLatin1Char('-'));
    text.Line(PairLine("Территориальная энергосистема:", param.PowerSystem));
    text.Line(PairLine("Субъект электроэнергетики:", param.Subject));
    text.Line(PairLine("Объект электроэнергетики:", param.Object));
    text.Line(PairLine("Источник:", param.Source));
    text.Line(PairLine("Версия ПО:", param.SoftwareVersion));
    text.Line(PairLine("Наименование файла:", source.RecordName()));
    text.Line(PairLine("Дата и время:", StampText(TriggerMoment(source))));
    text.Line(PairLine("Временной код:", param.TimeCode));
    text.Line(separator);
    text.Line(QStringLiteral("Информация о пуске:"));
    text.Line(separator);
}

void CheckStart(TextWalk& text, const Source& source)
{
    const ZuFileFormat& first = source.First();
    const bool hasDisplayText = !first.StartSignal.isEmpty();
    QString condition = PairLine("Условие пуска №1:", first.StartCondition);
    if (hasDisplayText)
        condition.replace(first.StartCircuit, first.StartSignal);
    text.Line(PairLine("Наименование ЛЭП и/или оборудования №1:",
                       hasDisplayText ? first.StartSignal : first.StartCircuit));
    text.Line(condition);
    text.Line(PairLine("Дата и время пуска:", StampText(TriggerMoment(source))));
    text.Line(PairLine("Уставка пуска:", first.StartSetting));
}

void CheckTable(TextWalk& text, const char* title, const QStringList& names)
{
    text.Line(QString::fromUtf8(title));
    for (const QString& name : names)
        text.LineLike(QString(name + QStringLiteral(":    ")).left(5) + QStringLiteral("модуль = "),
                      QStringLiteral(" град."));
}

void CheckTables(TextWalk& text)
{
    const QStringList phases = {"Ua", "Ub", "Uc", "3U0", "Ia", "Ib", "Ic", "3I0"};
    const QStringList sequences = {"U1", "U2", "3U0", "I1", "I2", "3I0"};
    CheckTable(
        text,
        "Действующие значения фазных напряжений и токов в момент до срабатывания по условию пуска:", phases);
    CheckTable(
        text,
        "Симметричные составляющие токов и напряжений в момент до срабатывания по условию пуска:", sequences);
    CheckTable(text, "Действующие значения фазных напряжений и токов в момент срабатывания по условию пуска:",
               phases);
    CheckTable(text, "Симметричные составляющие токов и напряжений в момент срабатывания по условию пуска:",
               sequences);
}

} // namespace

void CheckReport(const QByteArray& report, const Source& source, const QString& fileName)
{
    TextWalk text(report, fileName, "\n", source.Owner());
    CheckOpening(text, source);
    CheckStart(text, source);
    CheckTables(text);
    text.Line(QStringLiteral("Экстремальные значения тока и напряжения:"));
    // Without a channel the line of the smallest value reads "макс" too.
    for (const char* begin : {"макс_I = ", "м", "макс_U = ", "м"})
        text.LineLike(QString::fromUtf8(begin));
    text.Line(QString(58, QLatin1Char('-')));
    text.End();
}

} // namespace verify
