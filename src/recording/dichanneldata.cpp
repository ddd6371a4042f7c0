// A discrete channel: loading its change records and finding its state at a time.
#include "recording/dichanneldata.h"

#include "recording/fieldtext.h"

#include <QFile>

#include <cstring>
#include <new>

DiChannelData::DiChannelData()
    : descrLength(0), m_DataLength(0), m_HeaderDi{}, ChangeCount(0), Inverted(false), m_pData(nullptr),
      AddIndexPos(0), BayParam(nullptr), CurrentValue(0), CurrentIndex(0)
{}

bool DiChannelData::Fail(const QString& text)
{
    ErrorText = text;
    return false;
}

bool DiChannelData::Load(QFile& file, ZuFileSectionHeader* secHeader, QTextCodec* codec)
{
    if (m_pData != nullptr)
        return Fail(QStringLiteral("m_pData!=nullptr"));
    Name = zu::FieldText(secHeader->name, secHeader + 1, codec);
    descrLength = secHeader->descrLength;
    m_DataLength = secHeader->dataLength;

    if (file.read(reinterpret_cast<char*>(&m_HeaderDi), sizeof m_HeaderDi) != qint64(sizeof m_HeaderDi))
        return Fail(QStringLiteral("чтение файла (DiChannelHeader)"));
    Inverted = m_HeaderDi.inverted != 0;
    ChangeCount = m_HeaderDi.count;
    // Up to 4 spare bytes after the records are accepted.
    if (m_DataLength / sizeof(ZuDiChangeRecord) != ChangeCount)
        return Fail(QStringLiteral("чтение файла (дискреты, ошибка длины данных)"));
    if (!LoadRecords(file))
        return false;
    CurrentValue = ChangeCount != 0 && StateOf(0) ? 1 : 0;
    CurrentIndex = 0;
    return true;
}

bool DiChannelData::LoadRecords(QFile& file)
{
    if (m_DataLength > file.size() - file.pos())
        return Fail(QStringLiteral("чтение файла (данные DiChannel)"));
    if (ChangeCount == 0)
        return true; // spare bytes without a record are dropped
    m_pData = new (std::nothrow) unsigned char[m_DataLength];
    if (m_pData == nullptr)
        return Fail(QStringLiteral("чтение файла, ошибка выделения памяти"));
    if (file.read(reinterpret_cast<char*>(m_pData), m_DataLength) != m_DataLength)
        return Fail(QStringLiteral("чтение файла (данные DiChannel)"));
    return true;
}

void DiChannelData::Clear()
{
    delete[] m_pData;
    m_pData = nullptr;
}

bool DiChannelData::StateOf(quint32 index) const
{
    return (m_pData[index * sizeof(ZuDiChangeRecord)] != 0) != Inverted;
}

quint32 DiChannelData::TimeOf(quint32 index) const
{
    quint32 time = 0;
    const size_t offset = index * sizeof(ZuDiChangeRecord) + offsetof(ZuDiChangeRecord, time);
    std::memcpy(&time, m_pData + offset, sizeof time);
    return time;
}

bool DiChannelData::GetVal(unsigned int time)
{
    if (ChangeCount == 0)
        return false;
    if (CurrentIndex >= ChangeCount)
        return CurrentValue != 0;
    if (TimeOf(CurrentIndex) > time) {
        CurrentIndex = 0;
        CurrentValue = StateOf(0) ? 1 : 0;
        if (time < TimeOf(0))
            return CurrentValue != 0;
    }
    quint32 next = CurrentIndex + 1;
    if (next >= ChangeCount || time < TimeOf(next))
        return CurrentValue != 0;
    while (next < ChangeCount && TimeOf(next) <= time)
        ++next;
    CurrentIndex = next - 1;
    CurrentValue = StateOf(CurrentIndex) ? 1 : 0;
    return CurrentValue != 0;
}

quint64 DiChannelData::NextChange(unsigned int time) const
{
    if (ChangeCount == 0)
        return NoChange;
    if (TimeOf(CurrentIndex) > time)
        return TimeOf(CurrentIndex);
    return CurrentIndex + 1 < ChangeCount ? TimeOf(CurrentIndex + 1) : NoChange;
}
