// The sections of a container (.cff).
#pragma once

#include "comtrade/finding.h"
#include "comtrade/mark.h"
#include "comtrade/record.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace comtrade {

/// A mark and where it is.
struct MarkLine
{
    Mark mark;
    QByteArray text; ///< of the line, without its end
    qint64 line = 0; ///< from 1; after binary data not known, 0
};

/// A section with a text.
struct Section
{
    QByteArray text;
    qint64 firstLine = 0; ///< number of its first line; 0 if there is no such section
};

struct Container
{
    Section configuration;
    Section header;
    Section information;
    qint64 dataOffset = -1;      ///< of the data in the file; negative: there are none
    qint64 dataBytes = -1;       ///< as their mark says; negative: it does not
    qint64 dataLine = 0;         ///< number of the first line of the data
    std::vector<MarkLine> marks; ///< in the order of the file
};

/// Reads the sections but the data. What is forgiven is added to `forgiven`; without it, it is an Error.
/// Throws Error.
Container ReadContainer(const QString& path, Findings* forgiven);

/// The length of the data in bytes for DataReader: what the mark says if a mark or the end of the file
/// follows there, else what the configuration says if that fits better; negative: they end at the next mark
/// or with the file.
qint64 DataLength(const QString& path, const Container& container, const Configuration& configuration,
                  Findings* forgiven);

} // namespace comtrade
