#include "zucmtr/commands/exporttarget.h"

#include "comtrade/record.h"
#include "output/target.h"
#include "text/texts.h"
#include "zucmtr/terminal/checks.h"
#include "zucmtr/terminal/command.h"

#include <QFileInfo>

#include <map>

using forms::Form;

namespace {

bool IsDirectory(const QString& out)
{
    return out.endsWith(QLatin1Char('/')) || QFileInfo(out).isDir();
}

// The name without the ending of the form, if it has it.
QString BaseOf(const QString& name, Form form)
{
    const QString ending = forms::EndingOf(form);
    return name.endsWith(ending, Qt::CaseInsensitive) ? name.chopped(ending.size()) : name;
}

ExportTarget TargetOf(const QString& file, const QString& out, Form form, const forms::OptionNames& names)
{
    const QFileInfo source(file);
    ExportTarget target;
    target.file = file;
    if (out.isEmpty() || IsDirectory(out)) {
        target.directory = out.isEmpty() ? source.path() : out;
        target.base = source.completeBaseName();
    } else {
        const output::Target end = output::TargetOf(out);
        if (end.kind == output::Kind::Stream) {
            if (form == Form::Cfg)
                throw forms::WordError(Tr("export", "%1 %2: a record of several files needs a name or a "
                                                    "directory; %3 csv or %3 cff makes one file")
                                           .arg(QLatin1String(names.out), out, QLatin1String(names.form)));
            target.stream = out;
            return target;
        }
        const QFileInfo place(end.kind == output::Kind::RegularFile ? end.path : out);
        target.directory = place.path();
        target.base = BaseOf(place.fileName(), form);
    }
    if (!out.isEmpty()) // beside the file something is wrong with that first
        target.directory = CheckedDirectory(QLatin1String(names.out), target.directory);
    return target;
}

// The pieces of a record belong to each other by their names alone, in letters of either case.
bool ReplacesSource(const ExportTarget& target, Form form)
{
    const QFileInfo source(target.file);
    const bool isRecord = comtrade::IsRecordFile(target.file);
    const bool isContainer = source.suffix().compare(QLatin1String("cff"), Qt::CaseInsensitive) == 0;
    const bool isSameKind = isRecord && (isContainer ? form == Form::Cff : form == Form::Cfg);
    return isSameKind && target.base.compare(source.completeBaseName(), Qt::CaseInsensitive) == 0 &&
           QFileInfo(target.directory).canonicalFilePath() == QFileInfo(source.path()).canonicalFilePath();
}

void CheckSource(const ExportTarget& target, Form form, const forms::OptionNames& names)
{
    if (!target.stream.isEmpty())
        return;
    const QString path = target.Path(form);
    if (ReplacesSource(target, form))
        throw ConfigurationError(Tr("export", "%1: '%2' would take the place of what is read; give another "
                                              "name or directory")
                                     .arg(target.file, path));
    for (const QString& present : PresentFiles(target, form))
        CheckIsNoInput(QLatin1String(names.out), present, target.file);
}

} // namespace

QString ExportTarget::Path(Form form) const
{
    return stream.isEmpty() ? directory + QLatin1Char('/') + base + forms::EndingOf(form) : stream;
}

std::vector<ExportTarget> TargetsOf(const QStringList& files, const QString& out, Form form,
                                    const forms::OptionNames& names)
{
    if (files.size() > 1 && !out.isEmpty() && !IsDirectory(out))
        throw ConfigurationError(Tr("export", "%1 '%2' is one name for %3 files; give a directory, with / at "
                                              "its end")
                                     .arg(QLatin1String(names.out), out)
                                     .arg(files.size()));
    std::vector<ExportTarget> targets;
    std::map<QString, QString> owners; // by path
    for (const QString& file : files) {
        const ExportTarget target = TargetOf(file, out, form, names);
        CheckSource(target, form, names);
        const auto [owner, isNew] = owners.insert({target.Path(form).toLower(), file});
        if (!isNew)
            throw ConfigurationError(Tr("export", "'%1' and '%2' would both become '%3'; export them into "
                                                  "different directories")
                                         .arg(owner->second, file, target.Path(form)));
        targets.push_back(target);
    }
    return targets;
}

QStringList PresentFiles(const ExportTarget& target, Form form)
{
    QStringList endings = {forms::EndingOf(form)};
    if (form == Form::Cfg)
        endings << QStringLiteral(".dat") << QStringLiteral(".hdr") << QStringLiteral(".inf");
    QStringList present;
    for (const QString& ending : endings) {
        const QFileInfo file(target.directory + QLatin1Char('/') + target.base + ending);
        if (file.exists() || file.isSymLink())
            present << file.filePath();
    }
    return present;
}
