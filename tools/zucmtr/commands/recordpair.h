// A record held against its recording, whoever made the record and with whatever settings.
#pragma once

#include "verify/valuecomparison.h"
#include "zucmtr/host/devicechoice.h"

#include <QString>
#include <QStringList>

/// What of a record was compared.
enum class Extent {
    Nothing, // it belongs to another recording
    Samples, // samples, states, times and stamps
    Names,   // these, and the names in the configuration
    Bytes    // everything that 'convert' compares
};

struct PairVerdict
{
    Extent extent = Extent::Nothing;
    QString limit; ///< why no more was compared; empty for Bytes
    QString hint;  ///< what may explain that it is wrong; may be empty
    QString ini;   ///< the recorder's ini file; empty if there is none
    qint64 samples = 0;
    size_t analog = 0; ///< channels of the record
    size_t states = 0;
    verify::ValueComparison values; ///< only unless everything was compared
    comtrade::Findings wrong;       ///< nothing if the record is good
};

/// Compares a record (.cfg, .cff) with the recording that starts with the file. The choice is completed as
/// convert does; without ini file, or with isPlain, only what does not depend on one is compared. A record in
/// another form than the ini file's is compared in its own. Throws SourceError, verify::Unreadable or
/// comtrade::Error if one of the two cannot be read, and ConfigurationError.
PairVerdict ComparePair(const QString& recording, const QString& record, const DeviceChoice& choice,
                        bool isPlain);
