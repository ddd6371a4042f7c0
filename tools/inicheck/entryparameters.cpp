#include "inicheck/entryparameters.h"

#include "inicheck/nearest.h"
#include "text/texts.h"

namespace inicheck {

namespace {

// Voltage levels are compared as numbers: "0110" is 110.
QString AsTheConverter(const EntryParameter& parameter, const QString& value)
{
    return QLatin1String(parameter.name) == QLatin1String("V_L") ? QString::number(value.toUInt()) : value;
}

} // namespace

QString EntryParameters::Wanted() const
{
    QStringList names;
    for (const EntryParameter& parameter : kind.parameters)
        names << QLatin1String(parameter.name) + QLatin1String("=...");
    return names.join(QLatin1Char(' '));
}

QString EntryParameters::Value(const QString& parameters, const char* name)
{
    QString value;
    const QString key = QLatin1String(name);
    resorter.LoadOneParam(parameters, key + QLatin1String("="), key + QLatin1String(" ="), value);
    return value;
}

bool EntryParameters::Check(const IniLine& line, const QString& parameters)
{
    bool good = true;
    for (const EntryParameter& parameter : kind.parameters)
        good = CheckOne(line, parameters, parameter) && good;
    CheckWords(line, parameters);
    return good;
}

bool EntryParameters::CheckOne(const IniLine& line, const QString& parameters,
                               const EntryParameter& parameter)
{
    const QString name = QLatin1String(parameter.name);
    const QString value = Value(parameters, parameter.name);
    if (value.isEmpty()) {
        findings.push_back(
            AboutEntry(line, Severity::Warning, reason::ParameterMissing,
                       Tr("check", "'%1=' is missing, so its channel stays unsorted; give one of %2")
                           .arg(name, parameter.codes.join(QLatin1String(", ")))));
        return false;
    }
    if (parameter.codes.contains(AsTheConverter(parameter, value)))
        return true;
    const QString text = Tr("check", "'%1=%2' is not known, so its channel stays unsorted; give one of %3")
                             .arg(name, value, parameter.codes.join(QLatin1String(", ")));
    findings.push_back(AboutEntry(line, Severity::Warning, reason::UnknownCode,
                                  text + MeantText(Nearest(value, parameter.codes))));
    return false;
}

void EntryParameters::CheckWords(const IniLine& line, const QString& parameters)
{
    QStringList known = {QStringLiteral("VL_IND"), QStringLiteral("CIM_ID")};
    for (const EntryParameter& parameter : kind.parameters)
        known << QLatin1String(parameter.name);
    for (const QString& word : parameters.split(QLatin1Char(' '))) {
        const int equals = word.indexOf(QLatin1Char('='));
        const QString name = word.left(equals);
        if (equals <= 0 || known.contains(name))
            continue;
        const QString text = Tr("check", "'%1=' is ignored").arg(name);
        findings.push_back(AboutEntry(line, Severity::Warning, reason::UnknownParameter,
                                      text + MeantText(Nearest(name, known))));
    }
}

} // namespace inicheck
