#include "zucmtr/archive/entrypages.h"

#include "comtrade/record.h"
#include "view/view.h"
#include "zucmtr/host/linefile.h"
#include "zucmtr/host/recordsource.h"
#include "zucmtr/terminal/command.h"

#include <QFileInfo>

#include <algorithm>

namespace archive {

namespace {

// As in the catalogue: without an ini file that was found but is of no use.
RecordSource SourceOf(const QString& path, const PageReading& reading)
{
    try {
        return RecordSource(path, reading.choice, reading.isPlain);
    } catch (const ConfigurationError&) {
        if (!(reading.choice == DeviceChoice()) || comtrade::IsRecordFile(path))
            throw;
        return RecordSource(path, {}, true);
    }
}

void MakePage(const archivepage::Shown& entry, const PageReading& reading)
{
    const RecordSource source = SourceOf(entry.path, reading);
    LineData data = LoadLines(reading.lines, source.Ini(), entry.path);
    view::Options options;
    options.lines = std::move(data.lines);
    options.lineFile = data.path;
    options.source = QFileInfo(entry.path).fileName();
    options.encoding = comtrade::IsRecordFile(entry.path) ? reading.encoding : QString();
    view::WritePage(source.Path(), entry.page, options);
}

} // namespace

PageCounts MakePages(const std::vector<archivepage::Shown>& entries, const PageReading& reading,
                     const Progressing& progressing)
{
    std::vector<archivepage::Shown> missing;
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(missing),
                 [](const archivepage::Shown& entry) { return !QFileInfo::exists(entry.page); });
    PageCounts counts;
    size_t done = 0;
    for (const archivepage::Shown& entry : missing) {
        if (progressing.isToEnd())
            break;
        progressing.show(done++, missing.size());
        if (QFileInfo::exists(
                entry.page)) // another entry with the same contents, or another program, has made it
            continue;
        try {
            MakePage(entry, reading);
            ++counts.made;
        } catch (const ConfigurationError&) {
            throw;
        } catch (const text::Error& error) {
            ++counts.failed;
            progressing.complain({entry.path, error.Message(), false});
        }
    }
    return counts;
}

} // namespace archive
