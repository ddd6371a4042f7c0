// The parameters of a dictionary entry ("V_L=110 E_G=ln S_G=CT_IND"), read as the converter reads them.
#pragma once

#include "inicheck/dictionarykinds.h"

#include "device/zucmtrdevparam.h"
#include "resorter/ResorterZuCmtrConv.h"

namespace inicheck {

class EntryParameters
{
public:
    /// Both must outlive this object.
    EntryParameters(const EntryKind& kind_, Findings& findings_)
        : kind(kind_), findings(findings_), resorter(&device)
    {}

    /// What an entry needs, spelt as in the ini file.
    QString Wanted() const;

    /// True if the converter accepts them.
    bool Check(const IniLine& line, const QString& parameters);

    /// The value of one, empty if it is missing.
    QString Value(const QString& parameters, const char* name);

private:
    bool CheckOne(const IniLine& line, const QString& parameters, const EntryParameter& parameter);
    void CheckWords(const IniLine& line, const QString& parameters);

    const EntryKind& kind;
    Findings& findings;
    ZuCmtrDevParam device;
    ResorterZuCmtrConv resorter;
};

} // namespace inicheck
