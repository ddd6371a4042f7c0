// The HDR file: the fault report, 53 lines in Russian.
#include "service/zucmtrconverter.h"

#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "writers/textlines.h"

#include <QFile>
#include <QStringBuilder>

#include <array>

namespace {

struct RowHead
{
    const char* name;
    const char* unit;
};

constexpr size_t PhaseRows = 8;
constexpr size_t SequenceRows = 6;
constexpr RowHead PhaseHeads[PhaseRows] = {{"Ua", "кВ"}, {"Ub", "кВ"}, {"Uc", "кВ"}, {"3U0", "кВ"},
                                           {"Ia", "кА"}, {"Ib", "кА"}, {"Ic", "кА"}, {"3I0", "кА"}};
constexpr RowHead SequenceHeads[SequenceRows] = {{"U1", "кВ"}, {"U2", "кВ"}, {"3U0", "кВ"},
                                                 {"I1", "кА"}, {"I2", "кА"}, {"3I0", "кА"}};

// A triple of phases among the phase rows, and where its components are among the sequence rows.
struct Triple
{
    size_t phase, sequence;
};

constexpr Triple Triples[] = {{0, 0}, {4, 3}};

template <size_t Rows>
struct Values
{
    Values()
    {
        modules.fill(QStringLiteral("--"));
        angles.fill(QStringLiteral("--"));
    }

    std::array<QString, Rows> modules;
    std::array<QString, Rows> angles;
};

// The values of the started circuit at one moment, and then at the next.
class CircuitValues
{
public:
    CircuitValues(ZuFileFormat& file_, ResorterZuCmtrConv& resorter) : file(file_)
    {
        if (file.StartCircuit.isEmpty())
            return;
        const QString second = SecondCircuit(resorter);
        for (size_t row = 0; row < PhaseRows; ++row) {
            const QString signal = QString::fromUtf8(PhaseHeads[row].name);
            channels[row] = file.FindAnChannel(file.StartCircuit, signal);
            if (channels[row] == nullptr)
                channels[row] = file.FindAnChannel(second, signal);
        }
    }

    // Fills in the values for which there are channels, at the given sample.
    void Calculate(unsigned int index)
    {
        for (size_t row = 0; row < PhaseRows; ++row) {
            if (channels[row] != nullptr)
                file.CalcRMS(index, channels[row], phases.modules[row], phases.angles[row]);
        }
        for (const Triple& triple : Triples) {
            AnChannelData** phase = &channels[triple.phase];
            if (phase[0] != nullptr && phase[1] != nullptr && phase[2] != nullptr)
                file.CalcSeq(index, phase, &sequences.modules[triple.sequence],
                             &sequences.angles[triple.sequence]);
        }
    }

    const Values<PhaseRows>& Phases() const { return phases; }
    const Values<SequenceRows>& Sequences() const { return sequences; }

private:
    QString SecondCircuit(ResorterZuCmtrConv& resorter) const
    {
        BayOptionalParam* bay = nullptr;
        return resorter.FindOptBayParams(file.StartCircuit, &bay) ? bay->CircuitName : QString();
    }

    ZuFileFormat& file;
    std::array<AnChannelData*, PhaseRows> channels{};
    Values<PhaseRows> phases;
    Values<SequenceRows> sequences;
};

QString PairLine(const char* label, const QString& value)
{
    return QString::fromUtf8(label).leftJustified(40) % value;
}

// Neither a head nor a number has a "%" in it.
QString ValueLine(const RowHead& head, const QString& module, const QString& angle)
{
    const QString name = QString::fromUtf8(head.name) % QLatin1String(":    ");
    const QString middle = QStringLiteral("модуль = ") % module % QLatin1Char(' ') %
                           QString::fromUtf8(head.unit) % QLatin1String(",            ");
    return name.left(5) % middle.left(22) % QStringLiteral("угол = ") % angle % QStringLiteral(" град.");
}

// Collects the lines of the report in order.
class Report
{
public:
    void Pair(const char* label, const QString& value) { lines.push_back(PairLine(label, value)); }
    void Plain(const char* text) { lines.push_back(QString::fromUtf8(text)); }
    void Line(const QString& text) { lines.push_back(text); }
    void Separator() { lines.push_back(QString(58, QLatin1Char('-'))); }

    template <size_t Rows>
    void Table(const char* title, const RowHead (&heads)[Rows], const Values<Rows>& values)
    {
        Plain(title);
        for (size_t row = 0; row < Rows; ++row)
            lines.push_back(ValueLine(heads[row], values.modules[row], values.angles[row]));
    }

    const std::vector<QString>& Lines() const { return lines; }

private:
    std::vector<QString> lines;
};

// Deliberate: both stamps in the report are that of the fault.
void AddOpening(Report& report, const ZuFileFormat& first, const ZuCmtrDevParam& dev)
{
    report.Pair("Территориальная энергосистема:", dev.PowerSystem);
    report.Pair("Субъект электроэнергетики:", dev.Subject);
    report.Pair("Объект электроэнергетики:", dev.Object);
    report.Pair("Источник:", dev.Source);
    report.Pair("Версия ПО:", dev.SoftwareVersion);
    report.Pair("Наименование файла:", first.OutName);
    report.Pair("Дата и время:", first.CfgTrigStamp);
    report.Pair("Временной код:", dev.TimeCode);
    report.Separator();
    report.Plain("Информация о пуске:");
    report.Separator();
}

void AddStart(Report& report, const ZuFileFormat& first)
{
    const bool hasDisplayText = !first.StartSignal.isEmpty();
    report.Pair("Наименование ЛЭП и/или оборудования №1:",
                hasDisplayText ? first.StartSignal : first.StartCircuit);
    QString condition = PairLine("Условие пуска №1:", first.StartCondition);
    if (hasDisplayText) // Deliberate: the replacement works on the whole line, label included.
        condition.replace(first.StartCircuit, first.StartSignal, Qt::CaseSensitive);
    report.Line(condition);
    report.Pair("Дата и время пуска:", first.CfgTrigStamp);
    report.Pair("Уставка пуска:", first.StartSetting);
}

// The moment before the start: ten mains periods ahead of the moment at the start, or the first sample.
unsigned int MomentBefore(unsigned int trig, quint32 samplesPerPeriod)
{
    const quint64 tenPeriods = quint64(10) * samplesPerPeriod;
    return trig >= tenPeriods ? static_cast<unsigned int>(trig - tenPeriods) : 0;
}

void AddTables(Report& report, ZuFileFormat& first, ResorterZuCmtrConv& resorter)
{
    const unsigned int trig = first.GetTrigIndex();
    CircuitValues values(first, resorter);
    values.Calculate(MomentBefore(trig, first.SamplesPerPeriod));
    report.Table("Действующие значения фазных напряжений и токов в момент до срабатывания по условию пуска:",
                 PhaseHeads, values.Phases());
    report.Table("Симметричные составляющие токов и напряжений в момент до срабатывания по условию пуска:",
                 SequenceHeads, values.Sequences());
    values.Calculate(trig);
    report.Table("Действующие значения фазных напряжений и токов в момент срабатывания по условию пуска:",
                 PhaseHeads, values.Phases());
    report.Table("Симметричные составляющие токов и напряжений в момент срабатывания по условию пуска:",
                 SequenceHeads, values.Sequences());
}

void AddExtremes(Report& report, ZuFileFormat& first, std::vector<ZuFileFormat*>* files)
{
    QString maxI;
    QString minI;
    QString maxU;
    QString minU;
    first.FindExtremeRMS(first.StartCircuit, files, maxI, minI, maxU, minU);
    report.Plain("Экстремальные значения тока и напряжения:");
    for (const QString* line : {&maxI, &minI, &maxU, &minU})
        report.Line(*line);
    report.Separator();
}

} // namespace

bool ZuCmtrConverter::WriteHdr(std::vector<ZuFileFormat*>* files, ZuCmtrDevParam* dev)
{
    QFile& file = dev->FileHdr;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    ZuFileFormat& first = *files->at(0);
    Report report;
    AddOpening(report, first, *dev);
    AddStart(report, first);
    AddTables(report, first, *dev->Resorter);
    AddExtremes(report, first, files);
    {
        zu::TextLines lines(file, dev->ComtradeUtf8 ? codec_UTF8 : codec_CP1251);
        if (!lines.AddAll(report.Lines()))
            return false;
    }
    file.flush();
    file.close();
    return true;
}
