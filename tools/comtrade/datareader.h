// The data of a COMTRADE record, record by record.
#pragma once

#include "comtrade/forgiving.h"
#include "comtrade/plainline.h"
#include "comtrade/record.h"
#include "comtrade/storedform.h"

#include <QFile>

#include <exception>

namespace comtrade {

/// Reads a part of a file in blocks.
class DataReader
{
public:
    /// Data of the given form from offset on, length bytes (-1: to the end of the file, and for ASCII to the
    /// next mark of a container). What is forgiven is added to forgiven_; without it, it is an Error, after
    /// which Next goes on with the next line of ASCII data. All but the path must outlive the reader. Throws
    /// Error.
    DataReader(const QString& path, qint64 offset, qint64 length, const Configuration& configuration_,
               Findings* forgiven_ = nullptr);

    /// Like Record::Next.
    bool Next(Row& row);
    bool Next(Block& block);
    bool Next(NarrowBlock& block);
    bool Next(StoredRecords& stored);

    /// The type of the data, as they are stored.
    DataType Type() const { return type; }

    /// Like Record::MostRecords.
    qint64 MostRecords() const;

private:
    static constexpr char EndOfFile = 0x1A; // closes the files of some writers

    size_t Unread() const { return end - begin; }
    const char* At() const { return buffer.data() + begin; }
    bool Fill(size_t bytes);
    void Narrow(size_t from);
    size_t RecordsOfBlock() const;
    size_t Take(const Target& target, size_t most);
    size_t TakeLines(Target target, size_t most);
    size_t TakeBinary(const Target& target, size_t most);
    size_t FindBinary(size_t most);
    void PassBinary(size_t count);
    bool TakeLine(const Target& target);
    bool TakeStrictLine(const Target& target);
    bool TakeForgivingLine(const Target& target);
    bool PassWhatIsNoLine();
    bool ReadOddLine(const char* stop, bool hasEnd, const Target& target);
    void PassLineEnd();
    void PassByteOrderMark();
    void PassPadding();
    void EndWithZeros();
    void RemarkBlankLine(Severity severity);
    bool IsZeroRecord() const;
    bool IsComplete() const { return wanted > 0 && record >= wanted; }
    void PassBytesAfterEnd();
    void FinishBinary();
    void Finish();
    void FinishCutOff();
    void Add(const Slip& slip);
    [[noreturn]] void Fail(const QString& what) const;

    QFile file;
    const Configuration& configuration;
    Findings* const forgiven; // nothing is, if there is none
    StoredForm form;
    const DataType type;
    const LineShape shape;
    const PlainLineReader readPlainLine;
    const NarrowLineReader readNarrowLine;
    const size_t longest;     // bytes of a record
    const qint64 wanted;      // records by the configuration
    qint64 left;              // bytes of the part that are not read yet
    std::vector<char> buffer; // with the margins of plain lines
    size_t begin = 0;         // of what is read but not taken yet
    size_t end = 0;
    qint64 record = 0; // how many were taken
    bool hasEnded = false;
    bool hasOddLineEnds = false;
    bool hasBlankLine = false; // before the current line
    std::exception_ptr failure;
};

} // namespace comtrade
