#include "comtrade/storedform.h"

#include "comtrade/binaryrecord.h"
#include "comtrade/forgiving.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace comtrade {

namespace {

constexpr DataType BinaryTypes[] = {DataType::Binary, DataType::Binary32, DataType::Float32};

bool IsOfLine(char byte)
{
    return (byte >= '0' && byte <= '9') ||
           (byte != '\0' && std::strchr(",;.+-eEdDnNaA \t\r\n\"", byte) != nullptr);
}

// What the data start with, and how large they are.
class Sample
{
public:
    Sample(QFile& file, qint64 offset, qint64 length, const Configuration& configuration_)
        : configuration(configuration_), size(length >= 0 ? length : file.size() - offset)
    {
        constexpr qint64 part = 1 << 16;
        start = file.read(std::min(part, std::max<qint64>(size, 0)));
        file.seek(offset);
    }

    // Whether they start with bytes that no text has.
    bool IsBinary() const
    {
        const auto isControl = [](char byte) {
            return static_cast<unsigned char>(byte) < ' ' && std::strchr("\t\r\n\x1A", byte) == nullptr;
        };
        const QByteArray first = start.left(64);
        return std::any_of(first.begin(), first.end(), isControl) && first.count('\0') < first.size();
    }

    bool IsEmpty() const { return start.isEmpty(); }

    // Whether the data start as a line of numbers does.
    bool IsText() const
    {
        const int begin = start.startsWith("\xEF\xBB\xBF") ? 3 : 0;
        const int count = std::min(int(start.size()) - begin, 64);
        return count > 0 && std::all_of(start.begin() + begin, start.begin() + begin + count,
                                        [](char byte) { return IsOfLine(byte) || byte == '\x1A'; });
    }

    // Which byte of two has the character, if the data start as a line in UTF-16 does; else negative.
    int LowByteOfText() const
    {
        const bool hasMark = start.startsWith("\xFF\xFE") || start.startsWith("\xFE\xFF");
        const int begin = hasMark ? 2 : 0;
        const int count = std::min((int(start.size()) - begin) / 2, 32);
        for (int low = 0; low < 2 && count >= 4; ++low) {
            bool fits = true;
            for (int i = 0; i < count; ++i)
                fits = fits && IsOfLine(start[begin + 2 * i + low]) && start[begin + 2 * i + 1 - low] == 0;
            if (fits)
                return low;
        }
        return -1;
    }

    // Whether the samples of the configuration, or as many as there are, fill the data.
    bool FitsSize(DataType type) const
    {
        const auto record = static_cast<qint64>(BinaryRecordSize(configuration, type));
        const qint64 count = configuration.SampleCount();
        return count > 0 && size % record == 0 && size / record == count;
    }

    // Whether the numbers of the first samples count up; two at least.
    bool CountsUp(DataType type) const
    {
        const auto record = static_cast<int>(BinaryRecordSize(configuration, type));
        const int count = std::min(int(start.size()) / record, 16);
        for (int i = 1; i < count; ++i)
            if (NumberAt(i * record) != NumberAt((i - 1) * record) + 1)
                return false;
        return count > 1;
    }

    // Whether all four-byte values of the first samples can be single-precision ones of a usual size.
    bool HoldsFloats() const { return HoldsValues(DataType::Float32); }

    // Whether they can be integers within the limits of their channels.
    bool HoldsIntegers() const { return HoldsValues(DataType::Binary32); }

private:
    quint32 NumberAt(int at) const { return qFromLittleEndian<quint32>(start.constData() + at); }

    bool HoldsValues(DataType type) const
    {
        const auto record = static_cast<int>(BinaryRecordSize(configuration, type));
        const int count = std::min(int(start.size()) / record, 64);
        for (int i = 0; i < count; ++i)
            for (size_t channel = 0; channel < configuration.analog.size(); ++channel) {
                const quint32 word = NumberAt(i * record + 8 + 4 * static_cast<int>(channel));
                if (type == DataType::Float32 ? !CanBeFloat(word)
                                              : !CanBeInteger(word, configuration.analog[channel]))
                    return false;
            }
        return true;
    }

    static bool CanBeFloat(quint32 word)
    {
        constexpr float least = 1e-12F;
        constexpr float greatest = 1e12F;
        float value = 0;
        std::memcpy(&value, &word, sizeof value);
        return value == 0 || !std::isfinite(value) || (std::abs(value) > least && std::abs(value) < greatest);
    }

    static bool CanBeInteger(quint32 word, const AnalogChannel& channel)
    {
        const auto value = static_cast<qint32>(word);
        return value == std::numeric_limits<qint32>::min() || (value >= channel.min && value <= channel.max);
    }

    const Configuration& configuration;
    const qint64 size;
    QByteArray start;
};

// The types whose records fill the data; of those with four bytes a value, the one that the values fit.
std::vector<DataType> FittingTypes(const Sample& sample)
{
    std::vector<DataType> types;
    for (const DataType type : BinaryTypes)
        if (sample.FitsSize(type) && sample.CountsUp(type))
            types.push_back(type);
    const bool isEither = std::count(types.begin(), types.end(), DataType::Float32) > 0;
    if (isEither && sample.HoldsFloats() != sample.HoldsIntegers()) {
        const DataType wrong = sample.HoldsFloats() ? DataType::Binary32 : DataType::Float32;
        types.erase(std::remove(types.begin(), types.end(), wrong), types.end());
    }
    return types;
}

void AddType(Findings& forgiven, const QString& file, DataType told, const QString& actual)
{
    Remark(&forgiven, file, 0, 0,
           {Severity::Error, reason::DataTypeDiffers,
            Tr("comtrade", "the configuration says %1, but the data are %2").arg(NameOf(told), actual),
            Tr("comtrade", "read as these")});
}

} // namespace

StoredForm FormOf(QFile& file, qint64 offset, qint64 length, const Configuration& configuration,
                  Findings& forgiven)
{
    const Sample sample(file, offset, length, configuration);
    const DataType told = configuration.dataType;
    StoredForm form;
    form.type = told;
    if (sample.IsEmpty() || (told == DataType::Ascii ? sample.IsText() : sample.FitsSize(told)))
        return form;
    const int lowByte = sample.LowByteOfText();
    if (lowByte >= 0) {
        Remark(&forgiven, file.fileName(), 0, 0,
               {Severity::Error, reason::NotUtf8, Tr("comtrade", "the data are UTF-16"),
                Tr("comtrade", "read as that")});
        form.bytesOfACharacter = 2;
        form.lowByte = lowByte;
    }
    if (told != DataType::Ascii && (sample.IsText() || lowByte >= 0)) {
        AddType(forgiven, file.fileName(), told, NameOf(DataType::Ascii));
        form.type = DataType::Ascii;
    }
    if (form.type == DataType::Ascii && (sample.IsText() || lowByte >= 0))
        return form;
    if (told != DataType::Ascii && sample.CountsUp(told))
        return form; // longer or shorter than the configuration says
    const std::vector<DataType> types = FittingTypes(sample);
    if (types.size() == 1) {
        AddType(forgiven, file.fileName(), told, NameOf(types.front()));
        form.type = types.front();
    } else if (types.size() > 1 || (told == DataType::Ascii && sample.IsBinary())) {
        throw Error(
            Tr("comtrade", "%1: %2")
                .arg(file.fileName(),
                     types.empty()
                         ? Tr("comtrade",
                              "the configuration says %1, but the data are no text, and no binary type "
                              "fits their size")
                               .arg(NameOf(told))
                         : Tr("comtrade",
                              "the configuration says %1, but the data are as large as those of several "
                              "other types")
                               .arg(NameOf(told))));
    }
    return form;
}

} // namespace comtrade
