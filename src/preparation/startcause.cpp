// A recorder file: the report's texts about what started the recording, made from the start comment.
#include "recording/zufileformat.h"

#include "device/zucmtrdevparam.h"
#include "preparation/startcomment.h"
#include "resorter/ResorterZuCmtrConv.h"

namespace {

// What started the recorder, by the kind of the comment.
enum class StartKind {
    Group,     // a threshold of a three-phase group, whose first item names no phase
    Single,    // a threshold of a single channel
    Discrete,  // a discrete signal
    Frequency, // a threshold of the frequency
    Harmonic,  // a threshold of a harmonic
    Other
};

StartKind KindOf(const QString& kind)
{
    if (kind == QStringLiteral("ПП") || kind == QStringLiteral("ОП") || kind == QStringLiteral("НП"))
        return StartKind::Group;
    if (kind == QStringLiteral("ДЗ"))
        return StartKind::Single;
    if (kind == QStringLiteral("ДП"))
        return StartKind::Discrete;
    if (kind == QStringLiteral("Ч"))
        return StartKind::Frequency;
    return kind == QStringLiteral("Г") ? StartKind::Harmonic : StartKind::Other;
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
        return;
    }
    if (!zu::SplitStartComment(text, comment)) {
        StartCondition = text.section(QLatin1Char(','), 0, 0);
        return;
    }
    if (comment.items.size() < 2 || comment.items.size() > 5 || !DescribeStart(comment, dev))
        StartCondition = Comment;
}

// The texts of a comment with two to five items; false if it refers to a channel that is not there.
bool ZuFileFormat::DescribeStart(const zu::StartComment& comment, ZuCmtrDevParam* dev)
{
    const StartKind kind = KindOf(comment.kind);
    if (kind == StartKind::Discrete) {
        DescribeDiscrete(comment, dev);
        return true;
    }
    const QString& reference = comment.items[0];
    const AnChannelData* channel =
        FindAnChannel(kind == StartKind::Group ? reference + QLatin1Char('a') : reference);
    if (channel == nullptr)
        return false;
    dev->Resorter->SetEqNameIfExist(comment.inside, StartCircuit, StartSignal);
    DescribeSetting(comment, *channel);
    return true;
}

void ZuFileFormat::DescribeDiscrete(const zu::StartComment& comment, ZuCmtrDevParam* dev)
{
    if (comment.items.size() == 2) {
        StartCondition = QStringLiteral("Пуск по изменению ДС ") + comment.tail;
        dev->Resorter->SetEqNameIfExist(comment.tail, StartCircuit, StartSignal);
        return;
    }
    dev->Resorter->SetEqNameIfExist(comment.inside, StartCircuit, StartSignal);
    if (comment.items.size() == 5)
        DescribeFiveItems(comment);
}

// Deliberate: the return value stays empty and the unit is that of a frequency.
void ZuFileFormat::DescribeFiveItems(const zu::StartComment& comment)
{
    StartCondition = comment.text;
    StartSetting = ThresholdSetting({comment.items[1], QString(), QStringLiteral("Гц")});
}

// The condition and the setting of a start by the values of channel. A kind that is not known gets no texts.
void ZuFileFormat::DescribeSetting(const zu::StartComment& comment, const AnChannelData& channel)
{
    const StartKind kind = KindOf(comment.kind);
    if (kind == StartKind::Harmonic && comment.items.size() > 3) {
        DescribeHarmonic(comment, channel);
        return;
    }
    if (kind != StartKind::Frequency && comment.items.size() == 5) {
        DescribeFiveItems(comment);
        return;
    }
    zu::ThresholdText texts{comment.items[1], ReturnValue(comment), channel.Unit};
    const QString what = comment.items[0] + QLatin1Char(' ') + comment.tail;
    if (kind == StartKind::Frequency) {
        texts.unit = QStringLiteral("Гц");
        StartCondition = QStringLiteral("Пуск по частоте ") + what;
        StartSetting = ThresholdSetting(texts);
    } else if (kind == StartKind::Group || kind == StartKind::Single) {
        StartCondition = comment.text.left(5) + comment.kind + QLatin1Char(' ') + what;
        zu::ScaleThreshold(texts, static_cast<double>(float(channel.m_HeaderAn.Primary)));
        StartSetting = ThresholdSetting(texts);
    }
}

void ZuFileFormat::DescribeHarmonic(const zu::StartComment& comment, const AnChannelData& channel)
{
    zu::ThresholdText texts{comment.items[2], QString(), channel.Unit};
    zu::ScaleThreshold(texts, static_cast<double>(float(channel.m_HeaderAn.Primary)));
    StartCondition = comment.text;
    StartSetting = QStringLiteral("Номер гармоники %1, порог срабатывания - %2 %3")
                       .arg(comment.items[1])
                       .arg(texts.pickUp)
                       .arg(texts.unit);
}
