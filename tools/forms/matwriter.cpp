#include "forms/matwriter.h"

#include "explain/system.h"
#include "forms/comtradetext.h"
#include "text/texts.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>

namespace forms {

MatWriter::MatWriter(const QString& path_, const comtrade::Configuration& configuration_, size_t mostBytes)
    : path(path_), configuration(configuration_), times(1, configuration.SampleCount(), mostBytes),
      analog(configuration.analog.size(), configuration.SampleCount(), mostBytes),
      states(configuration.states.size(), configuration.SampleCount(), mostBytes)
{
    // Without a text of its own, matio would put the date there.
    constexpr char head[] = "MATLAB 5.0 MAT-file, written by zucmtr";
    file.reset(Matio().CreateVer(QFile::encodeName(path).constData(), head, MAT_FT_MAT5));
    if (!file)
        Fail(errno);
}

void MatWriter::Fail(int error) const
{
    throw FileError(Tr("forms", "'%1' cannot be written: %2").arg(path, explain::SystemText(error)), error);
}

void MatWriter::FailOfSize() const
{
    throw FormError(Tr("forms", "a MAT file holds 2 GB in a variable at most, and %1 analog and %2 discrete "
                                "channels have more after %3 samples: export fewer channels, a part of the "
                                "time, fewer samples per second, or to CSV")
                        .arg(analog.Columns())
                        .arg(states.Columns())
                        .arg(times.Rows()));
}

void MatWriter::Write(const comtrade::Block& block)
{
    seconds.resize(block.count);
    for (size_t i = 0; i < block.count; ++i) {
        seconds[i] = SecondsOf(block.times[i]);
        if (NanosecondsOf(seconds[i]) != block.times[i])
            throw FormError(Tr("forms", "sample %1 is so far from the trigger that a MAT file does not hold "
                                        "its time to the nanosecond: export a part of the time, or to CSV")
                                .arg(times.Rows() + i + 1));
    }
    if (!times.Append(seconds.data(), block.count) || !analog.Append(block.analog.data(), block.count) ||
        !states.Append(block.states.data(), block.count))
        FailOfSize();
}

void MatWriter::Put(const MatVariable& variable)
{
    errno = 0;
    if (Matio().VarWrite(file.get(), variable.get(), MAT_COMPRESSION_NONE) != 0)
        Fail(errno);
}

template <class NumberMatrix>
void MatWriter::Add(NumberMatrix& matrix, const char* name, matio_classes kind, matio_types type, int flags)
{
    size_t size[] = {matrix.Rows(), matrix.Columns()};
    const auto* numbers = matrix.Packed();
    const MatVariable variable(Matio().VarCreate(name, kind, type, 2, size,
                                                 const_cast<void*>(static_cast<const void*>(numbers)),
                                                 flags | MAT_F_DONT_COPY_DATA));
    if (!variable)
        throw std::bad_alloc();
    Put(variable);
}

void MatWriter::Finish()
{
    Add(times, TimeName, MAT_C_DOUBLE, MAT_T_DOUBLE, 0);
    Add(analog, AnalogName, MAT_C_DOUBLE, MAT_T_DOUBLE, 0);
    Add(states, DigitalName, MAT_C_UINT8, MAT_T_UINT8, MAT_F_LOGICAL);
    for (const MatVariable& variable : Descriptions(configuration))
        Put(variable);
    errno = 0;
    if (Matio().Close(file.release()) != 0)
        Fail(errno);
    // matio does not say whether the disk has taken all of it.
    const size_t least = times.Rows() * (sizeof(double) * (1 + analog.Columns()) + states.Columns());
    if (QFileInfo(path).size() < static_cast<qint64>(least))
        Fail(errno != 0 ? errno : ENOSPC);
}

} // namespace forms
