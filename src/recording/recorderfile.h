// A recorder file that is read from its start to its end.
#pragma once

#include <QFile>

#include <vector>

namespace zu {

/// Reads ahead in a buffer of its own, so that the headers of sections cost no call to the system, and takes
/// the size of the file once.
class RecorderFile : public QFile
{
public:
    using QFile::QFile;

    /// Opens it for reading. False as from QFile::open.
    bool OpenForReading();

    qint64 size() const override { return bytes; }
    bool seek(qint64 position) override;

protected:
    qint64 readData(char* data, qint64 maxSize) override;

private:
    qint64 ReadAt(qint64 position, char* data, qint64 count) const;

    qint64 bytes = 0;
    std::vector<char> ahead;
    qint64 aheadAt = 0;    // position in the file of what was read ahead,
    qint64 aheadCount = 0; // and its bytes
};

} // namespace zu
