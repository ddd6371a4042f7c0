#include "verify/pieces.h"

#include "device/zucmtrdevparam.h"
#include "text/texts.h"
#include "verify/device.h"
#include "verify/mismatch.h"
#include "verify/recordfiles.h"

#include <algorithm>

namespace verify {

namespace {

QByteArray Mark(const QByteArray& name)
{
    return "--- file type: " + name + " ---\r\n";
}

// The file's bytes up to the mark's line, and some after it; the whole file if there is no mark.
QByteArray ReadHead(QFile& file, const QByteArray& mark)
{
    constexpr qint64 step = qint64{1} << 20;
    QByteArray head = file.read(step);
    for (int searched = 0; head.indexOf("\n" + mark, searched) < 0 && head.size() < LargestText;) {
        searched = std::max<int>(0, head.size() - mark.size());
        const QByteArray next = file.read(step);
        if (next.isEmpty())
            return head;
        head += next;
    }
    return head + file.read(mark.size() + 64); // the rest of the mark's line
}

} // namespace

Pieces::Pieces(const QString& directory, const QString& recordName, const Device& device)
{
    const ZuCmtrDevParam& param = device.Param();
    const auto named = [&](const char* extension) {
        return directory + QLatin1Char('/') + recordName +
               QLatin1String(param.ComtradeCff ? ".cff" : extension);
    };
    configurationName = named(".cfg");
    dataName = named(".dat");
    reportName = named(".hdr");
    informationName = named(".inf");
    if (param.ComtradeCff)
        ReadCff(param.ComtradeBin);
    else
        ReadFiles(!param.Comtrade1999);
    IsThere(dataName);
    if (!param.ComtradeBin)
        CheckLastLine();
}

void Pieces::ReadFiles(bool withReports)
{
    configuration = ReadText(configurationName);
    if (!withReports)
        return;
    report = ReadText(reportName);
    information = ReadText(informationName);
}

// Data in lines must have the end of its last line.
void Pieces::CheckLastLine() const
{
    QFile data(dataName);
    Open(data);
    if (data.size() > 0 && !(data.seek(data.size() - 1) && data.read(1) == "\n"))
        throw Mismatch(Tr("verify", "'%1' does not end with a whole line; free the disk, then convert again")
                           .arg(dataName));
}

// The bytes between a mark, which must be at position, and the line that starts with the next mark.
QByteArray Pieces::TakeSection(const QByteArray& head, int& position, const QByteArray& mark,
                               const QByteArray& next) const
{
    if (head.mid(position, mark.size()) != mark)
        throw Mismatch(Tr("verify", "'%1' does not have '%2' where it should").arg(dataName, mark.trimmed()));
    const int begin = position + mark.size();
    const int end = head.indexOf("\n" + next, begin - 1);
    if (end < 0)
        throw Mismatch(Tr("verify", "'%1' ends before '%2'; free the disk, then convert again")
                           .arg(dataName, next.trimmed()));
    position = end + 1;
    return head.mid(begin, position - begin);
}

void Pieces::ReadCff(bool binary)
{
    QFile data(dataName);
    Open(data);
    const QByteArray dataMark = "--- file type: DAT ";
    const QByteArray head = ReadHead(data, dataMark);
    int position = 0;
    configuration = TakeSection(head, position, Mark("CFG"), Mark("INF"));
    information = TakeSection(head, position, Mark("INF"), Mark("HDR"));
    report = TakeSection(head, position, Mark("HDR"), dataMark);

    const int end = head.indexOf("\r\n", position);
    const QByteArray found = end < 0 ? QByteArray() : head.mid(position, end + 2 - position);
    dataBegin = position + found.size();
    QByteArray expected = Mark("DAT ASCII");
    if (binary)
        expected = Mark("DAT BINARY: " + QByteArray::number(data.size() - dataBegin));
    ExpectSame(Tr("verify", "'%1', mark of the data").arg(dataName), QString::fromLatin1(found.trimmed()),
               QString::fromLatin1(expected.trimmed()));
}

} // namespace verify
