// Which ini file and which of its sections belong to the recordings, where the command line leaves it open.
#pragma once

#include "zucmtr/host/recordinglist.h"

#include <QString>

#include <vector>

/// Empty texts have yet to be completed.
struct DeviceChoice
{
    QString ini;
    QString defaults; // section
    QString device;   // section

    bool operator==(const DeviceChoice& other) const
    {
        return ini == other.ini && defaults == other.defaults && device == other.device;
    }
};

/// The ini file found for a recording when none is named; empty if there is none.
QString IniOf(const Recording& recording);

/// Fills in what is empty. The ini file is the ZuDrv.ini beside the recordings, or above them up to the
/// directory of the command line, or in the current directory; the defaults are the section "Default", the
/// device is the only other section. If a file has a single section, it is both. Throws ConfigurationError,
/// which lists the choices, if none or several remain, and for a named section that does not exist.
void CompleteChoice(DeviceChoice& choice, const std::vector<Recording>& recordings);

/// The same for the ini file alone. It need not exist.
void CompleteIni(DeviceChoice& choice, const std::vector<Recording>& recordings);

/// The same for the ini file and the section of the defaults alone.
void CompleteDefaults(DeviceChoice& choice, const std::vector<Recording>& recordings);
