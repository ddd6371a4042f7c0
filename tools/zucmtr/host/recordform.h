// The form in which records are written, where the command line sets it over the ini file.
#pragma once

#include "output/temporarydirectory.h"
#include "zucmtr/host/devicechoice.h"

#include <memory>
#include <optional>

/// What is not given is as the ini file has it.
struct RecordForm
{
    std::optional<bool> isContainer; ///< one CFF file instead of CFG, DAT, HDR and INF
    std::optional<bool> isBinary;    ///< the data, instead of ASCII
    std::optional<bool> is1999;      ///< the revision, instead of 2013
    std::optional<bool> isUtf8;      ///< the texts, instead of CP1251

    bool IsGiven() const { return isContainer || isBinary || is1999 || isUtf8; }

    /// Lines with the keys of the ini file that make records of this form. A CFF file is of revision 2013,
    /// and revision 1999 has no CFF, so that each of the two decides the other unless both are given.
    QString Keys() const;
};

/// An ini file in which a device's section ends with other keys: of equal ones the last counts.
class ChangedIni
{
public:
    /// Copies the chosen ini file, if there are keys. Throws ConfigurationError.
    ChangedIni(const DeviceChoice& choice, const QString& keys);

    /// The choice with the file to load.
    const DeviceChoice& Choice() const { return changed; }

    /// A text about that file, with the name of the user's own.
    QString WithOwnName(QString text) const { return text.replace(changed.ini, own); }

private:
    const QString own;
    DeviceChoice changed;
    std::unique_ptr<output::TemporaryFile> copy;
};
