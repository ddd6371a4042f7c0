#include "zucmtr/run/workers.h"

#include "text/texts.h"
#include "zucmtr/terminal/command.h"
#include "zucmtr/terminal/console.h"

#include "inicheck/inicheck.h"
#include "inicheck/inilines.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

// The library would delete the recording before anybody could check its record.
void CheckDeletion(const Worker& worker, const WorkOrder& order, const DeviceChoice& choice)
{
    if (!worker.LibraryDeletes() || !order.verify || order.trustWriter || order.dryRun)
        return;
    throw ConfigurationError(
        Tr("convert",
           "'%1' has 'Удалять исходные = 1' in force for [%2]: the recordings would be deleted before their "
           "records are verified. Set the key to 0 and give --remove-source, which deletes each recording "
           "after its record is verified; or give --trust-writer to delete them unseen")
            .arg(choice.ini, choice.device));
}

// A record that the library writes while it deletes the recording goes right to its place.
void CheckLayout(const Worker& worker, const WorkOrder& order, const DeviceChoice& choice)
{
    if (worker.LibraryDeletes() && order.layout.IsGiven() && !order.dryRun)
        throw ConfigurationError(Tr("convert",
                                    "'%1' has 'Удалять исходные = 1' in force for [%2], where --layout "
                                    "cannot be; set the key to 0 and give --remove-source")
                                     .arg(choice.ini, choice.device));
}

// The library reports each bay that it has taken, as "BAY01: name,[text],[circuit]"; the log has that.
bool IsListOfBay(const QString& note)
{
    static const QRegularExpression pattern(QStringLiteral("\\ABAY[0-9]+: .*,\\[.*\\],\\[.*\\]\\z"));
    return pattern.match(note).hasMatch();
}

void ReportLoadingNotes(unsigned int device, const DeviceChoice& choice)
{
    QStringList notes = Host::TakeNotes(device);
    notes.erase(std::remove_if(notes.begin(), notes.end(), IsListOfBay), notes.end());
    if (notes.isEmpty())
        return;
    QStringList lines(
        Tr("convert", "warnings and notes on section [%1] of '%2':").arg(choice.device, choice.ini));
    for (const QString& note : notes)
        lines << QStringLiteral("  ") + note;
    Complain(lines);
}

// What concerns every recording is reported once, before the first.
void WarnOfIni(const QString& ini, const DeviceChoice& loaded)
{
    if (const std::optional<inicheck::Encoding> encoding = inicheck::IniLines(ini).OtherEncoding())
        Complain(ini + QLatin1String(": ") + inicheck::EncodingText(*encoding));
    for (const inicheck::Finding& finding :
         inicheck::SpoilsRecords(loaded.ini, loaded.defaults, loaded.device))
        Complain(ini + QLatin1Char(':') + QString::number(finding.line) + QLatin1String(": ") + finding.text);
}

// If every record is bound to be wrong, the recordings need not be read one by one.
void CheckRecordsCanBeRight(const DeviceChoice& choice, const WorkOrder& order)
{
    if (!order.verify || inicheck::SpoilsEveryRecord(choice.ini, choice.defaults, choice.device).empty())
        return;
    throw ConfigurationError(Tr("convert", "nothing is converted: with [%1] of '%2' as it is no record would "
                                           "be right; correct the line above")
                                 .arg(choice.device, choice.ini));
}

std::vector<std::unique_ptr<Worker>> Load(Host& host, const DeviceChoice& choice, const DeviceChoice& loaded,
                                          const WorkOrder& order, size_t count, bool loud)
{
    host.LoadDefaults(loaded.ini, loaded.defaults);
    WarnOfIni(choice.ini, loaded);
    CheckRecordsCanBeRight(loaded, order);
    std::vector<std::unique_ptr<Worker>> workers;
    for (size_t i = 0; i < count; ++i) {
        const unsigned int device = host.LoadDevice(loaded.ini, loaded.device);
        if (i == 0 && loud)
            ReportLoadingNotes(device, choice);
        workers.push_back(std::make_unique<Worker>(host, device, loaded, choice, order));
    }
    CheckDeletion(*workers.front(), order, choice);
    CheckLayout(*workers.front(), order, choice);
    return workers;
}

} // namespace

std::vector<std::unique_ptr<Worker>> MakeWorkers(Host& host, const DeviceChoice& choice,
                                                 const WorkOrder& order, size_t count, bool loud)
{
    const ChangedIni ini(choice, order.form.Keys());
    try {
        return Load(host, choice, ini.Choice(), order, count, loud);
    } catch (const ConfigurationError& error) {
        throw ConfigurationError(ini.WithOwnName(error.Message()).split(QLatin1Char('\n')));
    }
}
