// Damaged recordings, and what is saved of them.
#pragma once

#include "recorderfile/recorderfile.h"
#include "salvage/write.h"
#include "support/device.h"
#include "support/files.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <vector>

/// Recorder files of one recording: 32 analog and 64 discrete channels, 40 samples a file.
std::vector<QByteArray> StationFiles(bool compressed, int segments = 1);

/// The files of a sample station's recording with other numbers of channels.
std::vector<QByteArray> StationFiles(bool compressed, int segments, int analog, int discrete);

/// Where a section of a file is.
struct Place
{
    QString name;
    QString column; // the name in the record
    int begin = 0;
    int end = 0;
};

/// The sections of an undamaged file, found by nothing but the lengths in their headers.
std::vector<Place> PlacesIn(const QByteArray& file);

/// The columns of a record's ASCII data by the names of its channels, each with a line end after a value; and
/// the numbers and times of the samples under an empty name.
using Columns = QMap<QString, QByteArray>;

/// The first of the rows.
Columns FirstRows(const Columns& columns, int rows);

/// Names of the columns that are not in both, or not the same.
QStringList Difference(const Columns& a, const Columns& b);

/// Converts recordings, as they are or what is whole of them.
class Scene
{
public:
    /// The columns of the record that the library makes of these files. The test program ends if it fails.
    Columns Convert(const std::vector<QByteArray>& files);

    /// What is found in these files.
    salvage::Examination Examine(const std::vector<QByteArray>& files);

    /// The columns of the record that the library makes of what is whole of these files.
    Columns Salvage(const std::vector<QByteArray>& files);

private:
    QStringList Write(const std::vector<QByteArray>& files);
    static Columns ConvertFile(const QString& first);

    TestDirectory directory;
};
