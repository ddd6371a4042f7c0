// A recorder as the verification sees it: parameters and sorting dictionary, loaded apart from the
// converter's own.
#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class QTextCodec;
class ZuCmtrDevParam;

namespace verify {

struct KnownTexts;

class Device
{
public:
    /// Loads the sections from which the converter made a device. Throws Unreadable.
    Device(const QString& ini, const QString& defaults, const QString& section);
    ~Device();
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    ZuCmtrDevParam& Param() const { return *param; }

    /// Whether the ini file has the converter delete the recordings.
    bool DeletesSources() const;

    /// The codec of the record's texts.
    const QTextCodec& Codec() const;

    /// A text as it is read back from the record: what the code page lacks is replaced.
    QString AsWritten(const QString& text) const;

    /// The form of the record, as words: cfg or cff, 1999 or 2013, ascii or binary, cp1251 or utf8.
    QString Form() const;

    /// Lines of earlier records that were right. For one thread at a time.
    KnownTexts& Known() const { return *known; }

    /// File names of the record with this name; the one that a reader opens comes first.
    QStringList RecordFiles(const QString& recordName) const;

private:
    std::unique_ptr<ZuCmtrDevParam> param;
    std::unique_ptr<KnownTexts> known;
};

} // namespace verify
