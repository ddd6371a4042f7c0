#include "forms/notes.h"

#include "text/findingline.h"
#include "text/texts.h"

namespace forms {

namespace {

// "name, name and 5 more"
QString Listed(const QStringList& names)
{
    constexpr int most = 5;
    const QString text = names.mid(0, most).join(QLatin1String(", "));
    return names.size() <= most ? text : Tr("export", "%1 and %2 more").arg(text).arg(names.size() - most);
}

QString TextOf(const Exported& exported, const NewScale& scale)
{
    const comtrade::AnalogChannel& channel = exported.config.analog[scale.channel];
    return QStringLiteral("%1 (±%2 %3)")
        .arg(channel.name, QString::number(scale.halfStep, 'g', 3), channel.unit);
}

} // namespace

std::vector<Note> NotesOf(const Exported& exported)
{
    std::vector<Note> notes;
    const auto add = [&notes](const QString& text, bool isAskedFor = false) {
        notes.push_back({text, isAskedFor});
    };
    if (exported.total != exported.announced)
        add(Tr("export", "the configuration announces %1 samples, the data have %2; the configuration that "
                         "was written says %2")
                .arg(exported.announced)
                .arg(exported.total));
    if (!exported.newScales.empty()) {
        QStringList names;
        for (const NewScale& scale : exported.newScales)
            names << TextOf(exported, scale);
        add(Tr("export", "the form has whole codes, the source has not; channels with new codes, a and b "
                         "(greatest error): %1")
                .arg(Listed(names)));
    }
    if (!exported.resampling.isEmpty())
        add(exported.resampling, true);
    if (exported.rounded > 0)
        add(Tr("export", "values rounded to single precision: %1").arg(exported.rounded));
    if (!exported.lost.isEmpty())
        add(Tr("export", "left out, as revision 1999 has no place for it: %1")
                .arg(exported.lost.join(QLatin1String(", "))));
    if (exported.equipmentLeftOut)
        add(Tr("export",
               "left out of the INF file: sections on equipment, which count channels that are not there"));
    if (exported.statesLeftOut > 0)
        add(Tr("export", "discrete channels left out, since they never change: %1")
                .arg(exported.statesLeftOut),
            true);
    return notes;
}

QStringList ForgivenLines(const Exported& exported, Severity least)
{
    QStringList lines;
    for (const comtrade::Finding& one : exported.forgiven.All())
        if (one.severity >= least)
            lines << text::FindingText({one.file, one.line, one.column, one.severity, one.reason, one.text});
    return lines;
}

} // namespace forms
