// The texts of a written record: files of their own, or sections of its CFF file.
//
// A reader is lenient, for example about a mark in another spelling or a last line without its end. Here the
// texts must be as the library writes them, to the byte, so that nothing lost or changed goes unnoticed.
#pragma once

#include <QByteArray>
#include <QString>

namespace verify {

class Device;

class Pieces
{
public:
    /// Reads all but the data, of which only the start and the end are checked. Throws Mismatch for a piece
    /// that is missing, cannot be read or is not where it should be.
    Pieces(const QString& directory, const QString& recordName, const Device& device);

    const QByteArray& Configuration() const { return configuration; }
    const QByteArray& Report() const { return report; }           // empty for revision 1999
    const QByteArray& Information() const { return information; } // likewise

    /// Where the data begin in their file, bytes.
    qint64 DataBegin() const { return dataBegin; }

    /// The files in which the pieces are: all the same for a CFF file.
    QString configurationName, dataName, reportName, informationName;

private:
    void ReadFiles(bool withReports);
    void ReadCff(bool binary);
    void CheckLastLine() const;
    QByteArray TakeSection(const QByteArray& head, int& position, const QByteArray& mark,
                           const QByteArray& next) const;

    QByteArray configuration, report, information;
    qint64 dataBegin = 0;
};

} // namespace verify
