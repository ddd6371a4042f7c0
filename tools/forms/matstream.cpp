#include "forms/matstream.h"

#include "text/texts.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <limits>

namespace forms {

namespace {

// Whether the elements of the file, each with its length in front, end where the file does. matio does not
// notice what is missing at the end, and leaves memory as it was.
bool IsWhole(const QString& path)
{
    constexpr qint64 head = 128;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() < head)
        return false;
    qint64 at = head;
    while (at < file.size()) {
        const QByteArray tag = file.seek(at) ? file.read(8) : QByteArray();
        if (tag.size() < 8)
            return false;
        quint32 length = 0;
        std::memcpy(&length, tag.constData() + 4, sizeof length); // files that were written here
        at += tag.size() + qint64{length};
    }
    return at == file.size();
}

} // namespace

MatStream::MatStream(const QString& path_, const comtrade::Configuration& configuration_)
    : path(path_), configuration(configuration_),
      file(IsWhole(path) ? Matio().Open(QFile::encodeName(path).constData(), MAT_ACC_RDONLY) : nullptr)
{
    if (!file)
        Fail(Tr("forms", "this is no MAT file that can be read, or it is cut off"));
    times = Open(TimeName, MAT_C_DOUBLE, 1);
    analog = Open(AnalogName, MAT_C_DOUBLE, configuration.analog.size());
    states = Open(DigitalName, MAT_C_UINT8, configuration.states.size());
    CompareDescriptions();
}

void MatStream::Fail(const QString& what) const
{
    throw comtrade::Error(Tr("forms", "%1: %2").arg(path, what));
}

MatVariable MatStream::Open(const char* name, matio_classes kind, size_t columns)
{
    MatVariable variable(Matio().VarReadInfo(file.get(), name));
    const QString text = QString::fromLatin1(name);
    if (!variable)
        Fail(Tr("forms", "the variable '%1' is missing").arg(text));
    const size_t rows = times ? times->dims[0] : variable->dims[0];
    if (variable->class_type != kind || variable->rank != 2 || variable->dims[0] != rows ||
        variable->dims[1] != columns || rows > static_cast<size_t>(std::numeric_limits<int>::max()))
        Fail(Tr("forms", "the variable '%1' has another type or size").arg(text));
    return variable;
}

void MatStream::CompareDescriptions()
{
    for (const MatVariable& expected : Descriptions(configuration)) {
        const MatVariable variable(Matio().VarRead(file.get(), expected->name));
        const QString text = QString::fromLatin1(expected->name);
        if (!variable)
            Fail(Tr("forms", "the variable '%1' is missing").arg(text));
        if (!IsSame(*variable, *expected))
            Fail(Tr("forms", "the variable '%1' differs from what it should be").arg(text));
    }
}

// Rows from `next` on, turned into records.
template <class Number>
void MatStream::ReadColumns(matvar_t& variable, size_t columns, size_t count, std::vector<Number>& numbers)
{
    column.resize(count * sizeof(Number));
    for (size_t i = 0; i < columns; ++i) {
        const auto start = static_cast<int>(i * times->dims[0] + next);
        if (Matio().VarReadDataLinear(file.get(), &variable, column.data(), start, 1,
                                      static_cast<int>(count)) != 0)
            Fail(Tr("forms", "the variable '%1' cannot be read").arg(QString::fromLatin1(variable.name)));
        for (size_t row = 0; row < count; ++row)
            std::memcpy(&numbers[row * columns + i], column.data() + row * sizeof(Number), sizeof(Number));
    }
}

bool MatStream::Next(comtrade::Block& block)
{
    constexpr size_t blockSize = size_t{1} << 20U; // bytes; reads of a column are long then
    const size_t analogChannels = configuration.analog.size();
    const size_t stateChannels = configuration.states.size();
    const size_t wanted = std::max<size_t>(1, blockSize / (16 + 8 * analogChannels + stateChannels));
    const size_t count = std::min(wanted, times->dims[0] - next);
    block.Resize(wanted, configuration);
    block.count = count;
    seconds.resize(wanted);
    if (count == 0)
        return false;
    ReadColumns(*times, 1, count, seconds);
    ReadColumns(*analog, analogChannels, count, block.analog);
    ReadColumns(*states, stateChannels, count, block.states);
    for (size_t i = 0; i < count; ++i) {
        block.times[i] = NanosecondsOf(seconds[i]);
        block.numbers[i] = static_cast<quint32>(++next);
    }
    return true;
}

} // namespace forms
