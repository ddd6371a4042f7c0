#include "forms/comparison.h"

#include "forms/comtradetext.h"
#include "forms/digest.h"
#include "forms/exporting.h"
#include "text/texts.h"

using comtrade::Block;
using comtrade::Configuration;

namespace forms {

namespace {

// The records of a stream one by one.
class Cursor
{
public:
    explicit Cursor(Stream& stream_) : stream(stream_) {}

    bool Next()
    {
        if (++row < block.count)
            return true;
        row = 0;
        return stream.Next(block) && block.count > 0;
    }
    quint32 Number() const { return block.numbers[row]; }
    qint64 Time() const { return block.times[row]; }
    double Analog(size_t i, size_t channels) const { return block.analog[row * channels + i]; }
    quint8 State(size_t i, size_t channels) const { return block.states[row * channels + i]; }

private:
    Stream& stream;
    Block block;
    size_t row = 0;
};

QString NumberOf(double value)
{
    return value != value ? Tr("export", "missing") : QString::number(value, 'g', 17);
}

QString TimeOf(qint64 time)
{
    return time == Block::NoTime ? Tr("export", "missing") : QString::number(time);
}

QString Text(qint64 sample, const QString& what, const QString& read, const QString& written)
{
    return Tr("export", "sample %1, %2: %3 was read back where %4 was written")
        .arg(sample)
        .arg(what, read, written);
}

// Empty if the current records are the same.
QString DifferenceOf(const Cursor& written, const Cursor& read, const Configuration& config, qint64 sample)
{
    if (written.Number() != read.Number())
        return Text(sample, Tr("export", "its number"), QString::number(read.Number()),
                    QString::number(written.Number()));
    if (written.Time() != read.Time())
        return Text(sample, Tr("export", "its time"), TimeOf(read.Time()), TimeOf(written.Time()));
    const size_t analog = config.analog.size();
    for (size_t i = 0; i < analog; ++i)
        if (!IsSame(written.Analog(i, analog), read.Analog(i, analog)))
            return Text(sample, QStringLiteral("A%1 (%2)").arg(i + 1).arg(config.analog[i].name),
                        NumberOf(read.Analog(i, analog)), NumberOf(written.Analog(i, analog)));
    const size_t states = config.states.size();
    for (size_t i = 0; i < states; ++i)
        if (written.State(i, states) != read.State(i, states))
            return Text(sample, QStringLiteral("D%1 (%2)").arg(i + 1).arg(config.states[i].name),
                        QString::number(read.State(i, states)), QString::number(written.State(i, states)));
    return QString();
}

void CompareLines(const QString& written, const QString& read)
{
    const QStringList before = written.split(QLatin1Char('\n'));
    const QStringList after = read.split(QLatin1Char('\n'));
    for (int i = 0; i < std::max(before.size(), after.size()); ++i)
        if (before.value(i) != after.value(i))
            throw Different(Tr("export", "configuration, line %1: '%2' was read back where '%3' was written")
                                .arg(i + 1)
                                .arg(after.value(i).trimmed(), before.value(i).trimmed()));
}

void CompareBytes(const QByteArray& written, const QByteArray& read, bool isContainer, const QString& what)
{
    const bool hasLineEnd = !isContainer || written.isEmpty() || written.endsWith('\n');
    if (read != (hasLineEnd ? written : written + "\r\n"))
        throw Different(Tr("export", "%1: another text was read back than was written").arg(what));
}

} // namespace

void CompareTexts(const RecordTexts& written, const RecordTexts& read, bool isContainer)
{
    CompareLines(ConfigurationText(written.config), ConfigurationText(read.config));
    CompareBytes(written.texts.header, read.texts.header, isContainer, Tr("export", "HDR"));
    CompareBytes(written.texts.information, read.texts.information, isContainer, Tr("export", "INF"));
}

QString DifferenceOf(Stream& written, Stream& read)
{
    Cursor before(written);
    Cursor after(read);
    for (qint64 sample = 1;; ++sample) {
        const bool hasWritten = before.Next();
        const bool hasRead = after.Next();
        if (!hasWritten || !hasRead)
            return hasWritten == hasRead
                       ? Tr("export", "a difference that is not there any more: the file changed meanwhile")
                       : Tr("export", "%1 samples were read back, which is not what was written")
                             .arg(hasRead ? sample : sample - 1);
        QString difference = DifferenceOf(before, after, written.Config(), sample);
        if (!difference.isEmpty())
            return difference;
    }
}

} // namespace forms
