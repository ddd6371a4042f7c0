// A recorder file: the base name of the output and the COMTRADE names of the channels.
#include "recording/zufileformat.h"

#include "base/filledtext.h"
#include "config/GlobalFunction.h"
#include "device/zucmtrdevparam.h"
#include "resorter/ResorterZuCmtrConv.h"

QString ZuFileFormat::DoOutName(ZuCmtrDevParam* dev)
{
    const QString zone = QString::asprintf("%+d", TimeZoneSeconds / 3600);
    // Deliberate: rounding to milliseconds comes before the cut and can carry into a digit that it drops.
    const QString tenths = QString::asprintf("%03d", (TrigMicroseconds + 500) / 1000).left(1);
    QString name = TrigTime.toString(QStringLiteral("yyMMdd,hhmmss.")) + QStringLiteral("%1,%2t,%3,%4.%5");
    // One value after the other: a "%" sequence in an identity text is taken by the next one.
    name = name.arg(tenths).arg(zone);
    name = name.arg(dev->Object).arg(dev->Source).arg(dev->Subject);
    GlobalFunction::FileNameRemoveBadSymbols(name);
    return name;
}

bool ZuFileFormat::RenameSignal(const QString& raw, ZuCmtrDevParam* dev, QString& circuit, QString& signal,
                                QString& name, int& indexPos, BayOptionalParam*& bay)
{
    const auto colon = raw.indexOf(QLatin1Char(':'));
    if (colon < 0) {
        circuit = raw;
        signal = QLatin1String("");
        name = raw;
        indexPos = -1;
        return false;
    }
    circuit = raw.left(colon).trimmed();
    signal = raw.mid(colon + 1).trimmed();
    QString shown = circuit;
    BayOptionalParam* record = nullptr;
    if (dev->Resorter != nullptr)
        dev->Resorter->FindOptBayParams(circuit, &record);
    if (record != nullptr) {
        if (!record->DisplayName.isEmpty())
            shown = record->DisplayName;
        bay = record;
    }
    if (dev->RenameSignals) {
        name = zu::TwoWords(signal, shown);
        indexPos = static_cast<int>(signal.length());
    } else {
        name = zu::TwoWords(shown, signal);
        indexPos = static_cast<int>(name.length());
    }
    return true;
}

// Phase of a signal of 2 or 3 characters: what follows its quantity, whatever the letters mean.
static QString PhaseOf(const QString& signal)
{
    if (signal.length() != 2 && signal.length() != 3)
        return QStringLiteral("");
    const bool threefold = signal.length() == 3 && signal[0] == QLatin1Char('3');
    return signal.mid(threefold ? 2 : 1).toUpper();
}

bool ZuFileFormat::RenameAllChannelsName(ZuCmtrDevParam* dev)
{
    bool hasColon = false;
    for (AnChannelData* channel : AnChannels) {
        hasColon = RenameSignal(channel->Name, dev, channel->CfgCircuit, channel->CfgSignal, channel->CfgName,
                                channel->AddIndexPos, channel->BayParam);
        channel->CfgPhase = PhaseOf(channel->CfgSignal);
        if (!dev->AdditionalIndexes)
            channel->AddIndexPos = -1;
    }
    for (DiChannelData* channel : DiChannels) {
        // Deliberate: one flag runs through both loops; the last analog name or the first discrete name
        // without a colon ends the renaming of all discrete channels after it.
        if (hasColon) {
            QString signal;
            hasColon = RenameSignal(channel->Name, dev, channel->CfgCircuit, signal, channel->CfgName,
                                    channel->AddIndexPos, channel->BayParam);
        }
        if (!dev->AdditionalIndexes)
            channel->AddIndexPos = -1;
    }
    return hasColon;
}
