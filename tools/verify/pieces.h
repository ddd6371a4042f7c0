// The files of a written record, or the sections of its CFF file.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace verify {

class Device;

/// Reads all but the data, which may be of any size, and opens the data.
class Pieces
{
public:
    /// Throws Mismatch for a piece that is missing, cannot be read or is not where it should be.
    Pieces(const QString& directory, const QString& recordName, const Device& device);

    const QByteArray& Configuration() const { return configuration; }
    const QByteArray& Report() const { return report; }           // empty for revision 1999
    const QByteArray& Information() const { return information; } // likewise

    /// Stands at the first record; the data go to the end of the file.
    QFile& Data() { return data; }

    /// The files in which the pieces are: all the same for a CFF file.
    QString configurationName, dataName, reportName, informationName;

private:
    void OpenFiles(bool withReports);
    void OpenCff(bool binary);
    QByteArray TakeSection(const QByteArray& head, int& position, const QByteArray& mark,
                           const QByteArray& next) const;

    QByteArray configuration, report, information;
    QFile data;
};

} // namespace verify
