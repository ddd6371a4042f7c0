// An analog channel: loading its header and samples.
#include "recording/anchanneldata.h"

#include "recording/deltadecoder.h"
#include "recording/fieldtext.h"
#include "recording/samplememory.h"

#include <QFile>

#include <memory>
#include <new>

AnChannelData::AnChannelData()
    : descrLength(0), m_DataLength(0), m_HeaderAn{}, m_pData(nullptr), Samples(nullptr), AddIndexPos(0),
      BayParam(nullptr), IsVoltage(false), IsCurrent(false), ExtremeScale(1.0F), ExtremeMin(0.0F),
      ExtremeMax(0.0F), CoefA(0.0F), CoefB(0.0F), SkewMicroseconds(0.0F)
{}

bool AnChannelData::Fail(const QString& text)
{
    ErrorText = text;
    return false;
}

bool AnChannelData::Load(QFile& file, ZuFileSectionHeader* secHeader, QTextCodec* codec)
{
    if (m_pData != nullptr)
        return Fail(QStringLiteral("m_pData!=nullptr"));
    Name = zu::FieldText(secHeader->name, secHeader + 1, codec);
    descrLength = secHeader->descrLength;
    m_DataLength = secHeader->dataLength;

    const qint64 behindSectionHeader = file.pos();
    if (!ReadHeader(file, codec))
        return false;
    if (m_DataLength == 0 || m_HeaderAn.points == 0)
        return Fail(QStringLiteral("канал %1 не содержит данных").arg(Name));

    const qint64 dataStart = behindSectionHeader + descrLength - qint64(sizeof(ZuFileSectionHeader));
    if (!file.seek(dataStart) || m_DataLength > file.size() - dataStart)
        return Fail(QStringLiteral("чтение файла (данные AnChannel)"));
    return LoadSamples(file);
}

bool AnChannelData::ReadHeader(QFile& file, QTextCodec* codec)
{
    if (file.read(reinterpret_cast<char*>(&m_HeaderAn), sizeof m_HeaderAn) != qint64(sizeof m_HeaderAn))
        return Fail(QStringLiteral("чтение файла (AnChannelHeader)"));
    Unit = zu::FieldText(m_HeaderAn.unit, &m_HeaderAn + 1, codec);
    Remark = zu::FieldText(m_HeaderAn.remark, &m_HeaderAn + 1, codec);
    return true;
}

// Room for samples: shared where they are many, else their own. Null if there is no memory.
quint16* AnChannelData::NewSamples(size_t count)
{
    sharedSamples = shared != nullptr ? shared->Take(count) : nullptr;
    return sharedSamples != nullptr ? sharedSamples : new (std::nothrow) quint16[count];
}

// Reads the data area, which starts at file's position; plain samples go straight to their place.
bool AnChannelData::LoadSamples(QFile& file)
{
    const size_t words = (size_t(m_DataLength) + 1) / 2;
    if (m_HeaderAn.compressed != 0) {
        const std::unique_ptr<quint16[]> area(new (std::nothrow) quint16[words]);
        auto* bytes = reinterpret_cast<unsigned char*>(area.get());
        return CheckMemory(bytes) && ReadArea(file, bytes) && Expand(bytes);
    }
    m_pData = NewSamples(words);
    const bool read = CheckMemory(m_pData) && ReadArea(file, reinterpret_cast<unsigned char*>(m_pData));
    if (!read || quint64(2) * m_HeaderAn.points != m_DataLength) {
        Clear();
        return read &&
               Fail(QStringLiteral("плохой формат AnChannel (sizeof(WORD)*m_HeaderAn.points!=m_DataLength)"));
    }
    Samples = reinterpret_cast<qint16*>(m_pData);
    return true;
}

bool AnChannelData::CheckMemory(const void* memory)
{
    return memory != nullptr || Fail(QStringLiteral("чтение файла, ошибка выделения памяти"));
}

bool AnChannelData::ReadArea(QFile& file, unsigned char* buffer)
{
    if (file.read(reinterpret_cast<char*>(buffer), m_DataLength) != m_DataLength)
        return Fail(QStringLiteral("чтение файла (данные AnChannel)"));
    return true;
}

bool AnChannelData::Expand(unsigned char* area)
{
    const QString badArea = QStringLiteral("ошибка распаковки сжатых данных");
    if (!zu::CanExpandTo({area, m_DataLength}, m_HeaderAn.points))
        return Fail(badArea);
    m_pData = NewSamples(m_HeaderAn.points);
    Samples = reinterpret_cast<qint16*>(m_pData);
    return CheckMemory(m_pData) && (UnCompressData(area) || Fail(badArea));
}

bool AnChannelData::UnCompressData(unsigned char* source)
{
    return m_pData != nullptr && zu::ExpandSamples({source, m_DataLength}, Samples, m_HeaderAn.points);
}

void AnChannelData::Clear()
{
    if (m_pData != sharedSamples)
        delete[] m_pData;
    m_pData = nullptr;
    sharedSamples = nullptr;
}
