#include "zucmtr/commands/exportfile.h"

#include "explain/system.h"
#include "forms/channelchoice.h"
#include "forms/fileerror.h"
#include "inicheck/nearest.h"
#include "output/outputfile.h"
#include "output/temporarydirectory.h"
#include "text/texts.h"
#include "zucmtr/files/staging.h"

#include <QDir>
#include <QFile>

#include <cerrno>

namespace {

// The most similar name or circuit.
QString Meant(const ExportOrder& order, const QString& pattern)
{
    const comtrade::Record opened(order.record, order.reading);
    QStringList names;
    for (const comtrade::AnalogChannel& channel : opened.Config().analog)
        names << channel.name << channel.circuit;
    for (const comtrade::StateChannel& channel : opened.Config().states)
        names << channel.name << channel.circuit;
    names.removeDuplicates();
    return inicheck::MeantText(inicheck::Nearest(pattern, names));
}

void CheckPresent(const ExportOrder& order)
{
    const QStringList present = PresentFiles(order.target, order.request.form);
    if (!order.replace && !present.isEmpty())
        throw PresentError(present.first());
}

// A verified file, to standard output, a device or a pipe.
void Pour(const QString& path, const QString& stream)
{
    constexpr qint64 step = qint64{1} << 20;
    QFile file(path);
    output::OutputFile out(stream);
    bool good = file.open(QIODevice::ReadOnly) && out.Open();
    while (good && !file.atEnd())
        good = out.Write(file.read(step));
    if (!good || !out.Commit())
        throw forms::FileError(stream + QStringLiteral(": ") + out.ErrorText(), EIO);
}

ExportResult ToStream(const forms::Source& source, const forms::Request& request, const QString& stream)
{
    const output::TemporaryDirectory directory(QDir::tempPath());
    if (directory.Error() != 0)
        throw forms::FileError(QDir::tempPath() + QStringLiteral(": ") +
                                   explain::SystemText(directory.Error()),
                               directory.Error());
    const QString base = directory.FilePath(QStringLiteral("export"));
    const forms::Exported exported = forms::Export(source, request, base);
    Pour(base + exported.files.first(), stream);
    return {exported, {stream}};
}

ExportResult ToFiles(const forms::Source& source, const forms::Request& request, const ExportOrder& order)
{
    const ExportTarget& target = order.target;
    CheckPresent(order);
    Staging staging(target.directory);
    ExportResult result;
    result.exported = forms::Export(source, request, staging.Directory() + QLatin1Char('/') + target.base);
    staging.Lock();
    CheckPresent(order); // also what has appeared meanwhile
    QStringList names;
    for (const QString& ending : result.exported.files) {
        names << target.base + ending;
        result.files << target.directory + QLatin1Char('/') + names.last();
    }
    staging.Commit(names, false);
    return result;
}

} // namespace

ExportResult ExportFile(const ExportOrder& order, const forms::OptionNames& names)
{
    forms::Request request = order.request;
    request.span = forms::SpanOf(order.part, order.record, order.reading, names);
    const forms::Source source = {order.record, order.reading, order.isStopped};
    try {
        return order.target.stream.isEmpty() ? ToFiles(source, request, order)
                                             : ToStream(source, request, order.target.stream);
    } catch (const forms::Different& error) {
        throw forms::Different(
            Tr("export", "what was written is wrong and was removed: %1").arg(error.Message()));
    } catch (const forms::NoSuchChannel& error) {
        throw forms::NoSuchChannel(error.Message() + Meant(order, error.pattern), error.pattern);
    }
}
