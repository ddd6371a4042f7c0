// Binary data that stay as they are: copied byte by byte, and compared so.
#pragma once

#include "comtrade/record.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace forms {

/// A part of a file.
struct RawData
{
    QString path;
    qint64 offset = 0;
    qint64 bytes = 0;
};

/// The data of a record of separate files, if they are binary, have the size that the configuration
/// announces, and nothing about the record had to be forgiven: then the bytes are what the reader makes codes
/// of.
std::optional<RawData> RawDataOf(const QString& path, const comtrade::Record& record);

/// Reads the bytes in large pieces. Throws comtrade::Error.
void ReadRaw(const RawData& data, const std::function<void(const QByteArray&)>& take);

/// Whether two parts of files hold the same bytes. Throws comtrade::Error.
bool AreSame(const RawData& one, const RawData& other);

} // namespace forms
