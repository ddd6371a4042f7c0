// A recorder file: the report's texts about what started the recording, made of the start comment.
#include "recording/zufileformat.h"

#include "recording/startcomment.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "service/zucmtrdevparam.h"

namespace {

const QString& Discrete()
{
    static const QString kind(QStringLiteral("ДП"));
    return kind;
}

const QString& Frequency()
{
    static const QString kind(QStringLiteral("Ч"));
    return kind;
}

const QString& Harmonic()
{
    static const QString kind(QStringLiteral("Г"));
    return kind;
}

// A start by a three-phase group, whose first item names no phase.
bool IsGroup(const QString& kind)
{
    return kind == QStringLiteral("ПП") || kind == QStringLiteral("ОП") || kind == QStringLiteral("НП");
}

QString ThresholdSetting(const zu::ThresholdText& texts)
{
    return QStringLiteral("Порог срабатывания - %1 %3, порог возврата - %2 %3")
        .arg(texts.pickUp)
        .arg(texts.returns)
        .arg(texts.unit);
}

// The item that holds the return value. Deliberate: two items let the checked access throw.
const QString& ReturnValue(const zu::StartComment& comment)
{
    const size_t count = comment.items.size();
    if (count == 2)
        return comment.items.at(2);
    if (count == 3)
        return comment.items[1];
    return comment.items[count - 2];
}

} // namespace

void ZuFileFormat::ParseComment(ZuCmtrDevParam* dev)
{
    StartCircuit = QLatin1String("");
    StartSetting = QLatin1String("");
    const QString text = zu::CleanStartComment(Comment, TrigMicroseconds, StartMicroseconds);
    zu::StartComment comment;
    if (!text.startsWith(QStringLiteral("Пуск"))) {
        StartCondition = Comment;
    } else if (!zu::SplitStartComment(text, comment)) {
        StartCondition = text.section(QLatin1Char(','), 0, 0);
    } else if (comment.items.size() < 2 || comment.items.size() > 5) {
        StartCondition = Comment;
    } else {
        DescribeStart(comment, dev);
    }
}

// The texts of a comment with two to five items.
void ZuFileFormat::DescribeStart(const zu::StartComment& comment, ZuCmtrDevParam* dev)
{
    AnChannelData* channel = nullptr;
    if (comment.kind != Discrete()) {
        const QString& reference = comment.items[0];
        channel = FindAnChannel(IsGroup(comment.kind) ? reference + QLatin1Char('a') : reference);
        if (channel == nullptr) {
            StartCondition = Comment;
            return;
        }
    } else if (comment.items.size() == 2) {
        StartCondition = QStringLiteral("Пуск по изменению ДС ") + comment.tail;
        dev->Resorter->SetEqNameIfExist(comment.tail, StartCircuit, StartSignal);
        return;
    }
    dev->Resorter->SetEqNameIfExist(comment.inside, StartCircuit, StartSignal);
    DescribeSetting(comment, channel);
}

// The condition and the setting. channel is null for a start by a discrete signal.
void ZuFileFormat::DescribeSetting(const zu::StartComment& comment, const AnChannelData* channel)
{
    const QString unit = channel != nullptr ? channel->Unit : QString();
    const QString& kind = comment.kind;
    if (kind == Harmonic() && comment.items.size() > 3) {
        DescribeHarmonic(comment, *channel);
        return;
    }
    if (comment.items.size() == 5 && kind != Frequency()) {
        // Deliberate: the return value stays empty and the unit is that of a frequency.
        StartCondition = comment.text;
        StartSetting = ThresholdSetting({comment.items[1], QString(), QStringLiteral("Гц")});
        return;
    }
    zu::ThresholdText texts{comment.items[1], ReturnValue(comment), unit};
    const QString what = comment.items[0] + QLatin1Char(' ') + comment.tail;
    if (kind == Frequency()) {
        texts.unit = QStringLiteral("Гц");
        StartCondition = QStringLiteral("Пуск по частоте ") + what;
        StartSetting = ThresholdSetting(texts);
    } else if (IsGroup(kind) || kind == QStringLiteral("ДЗ")) {
        StartCondition = comment.text.left(5) + kind + QLatin1Char(' ') + what;
        zu::ScaleThreshold(texts, static_cast<double>(float(channel->m_HeaderAn.Primary)));
        StartSetting = ThresholdSetting(texts);
    }
    // Any other kind gets no texts.
}

void ZuFileFormat::DescribeHarmonic(const zu::StartComment& comment, const AnChannelData& channel)
{
    zu::ThresholdText texts{comment.items[2], QString(), channel.Unit};
    zu::ScalePickUp(texts, static_cast<double>(float(channel.m_HeaderAn.Primary)));
    StartCondition = comment.text;
    StartSetting = QStringLiteral("Номер гармоники %1, порог срабатывания - %2 %3")
                       .arg(comment.items[1])
                       .arg(texts.pickUp)
                       .arg(texts.unit);
}
