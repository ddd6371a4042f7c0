#include "inicheck/dictionarykinds.h"

#include "config/QSettingsRu.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "text/texts.h"

#include <QRegularExpression>
#include <QVariant>

#include <limits>

namespace inicheck {

namespace {

template <size_t Rows>
QStringList Codes(const char* const (&table)[Rows])
{
    QStringList codes;
    for (const char* code : table)
        codes << QLatin1String(code);
    return codes;
}

QStringList VoltageLevels()
{
    QStringList levels;
    for (const quint32 level : gst_vl)
        levels << QString::number(level);
    return levels;
}

qlonglong MaximumOf(const IniLines& ini, const QString& section, const EntryKind& kind, Findings& findings)
{
    const IniLine* line = ini.Find(section, QLatin1String(kind.maximum));
    if (line == nullptr)
        return 0;
    bool ok = false;
    const unsigned int maximum = QVariant(line->value).toUInt(&ok); // as the converter does
    if (!ok)
        findings.push_back(
            AboutEntry(*line, Severity::Error, reason::NumberOutOfRange,
                       Tr("check", "'%1' is no whole number: the section does not load").arg(line->value)));
    if (maximum != std::numeric_limits<unsigned int>::max())
        return ok ? maximum : 0;
    findings.push_back(
        AboutEntry(*line, Severity::Warning, reason::NumberTooLarge,
                   Tr("check", "'%1' counts as 0; give the highest number that is there").arg(line->value)));
    return 0;
}

} // namespace

const EntryKind& AnalogEntries()
{
    static const EntryKind kind{
        "A", "nAnMax", {{"V_L", VoltageLevels()}, {"E_G", Codes(gst_eg)}, {"S_G", Codes(gst_sg)}}};
    return kind;
}

const EntryKind& DiscreteEntries()
{
    static const EntryKind kind{
        "D",
        "nDiMax",
        {{"V_L", VoltageLevels()}, {"E_G", Codes(gst_eg)}, {"D_G", Codes(gst_dg)}, {"S_T", Codes(gst_st)}}};
    return kind;
}

const EntryKind& BayEntries()
{
    static const EntryKind kind{"BAY", "nBayMax", {}};
    return kind;
}

std::vector<const IniLine*> ReadEntries(const IniLines& ini, const QString& section, const EntryKind& kind,
                                        Findings& findings)
{
    const QRegularExpression pattern(QStringLiteral("\\A%1([0-9]+)\\z").arg(QLatin1String(kind.prefix)));
    const qlonglong highest = MaximumOf(ini, section, kind, findings);
    std::vector<const IniLine*> listed;
    for (const IniLine* line : ini.EntriesOf(section)) {
        const QRegularExpressionMatch match = pattern.match(line->key);
        if (!match.hasMatch())
            continue;
        const qlonglong number = match.captured(1).toLongLong();
        const QString key =
            QSettingsRu::NumberedKey(QLatin1String(kind.prefix), static_cast<unsigned int>(number));
        if (number < 1 || line->key != key)
            findings.push_back(
                AboutEntry(*line, Severity::Warning, reason::BadNumbering,
                           Tr("check", "ignored: the numbers are written 01, 02 ... 99, 100")));
        else if (number > highest)
            findings.push_back(AboutEntry(*line, Severity::Warning, reason::BeyondMaximum,
                                          Tr("check", "ignored: '%1' is %2; raise it to %3")
                                              .arg(QLatin1String(kind.maximum))
                                              .arg(highest)
                                              .arg(number)));
        else if (line->value.isEmpty())
            findings.push_back(AboutEntry(*line, Severity::Note, reason::EmptyEntry,
                                          Tr("check", "ignored: it has no value")));
        else
            listed.push_back(line);
    }
    return listed;
}

Finding AboutEntry(const IniLine& line, Severity severity, const char* reason, const QString& text)
{
    return {line.number, severity, reason, line.key + QLatin1String(": ") + text};
}

} // namespace inicheck
