// A recording with its record, made by the library, for tests that damage the record.
#pragma once

#include "recorderfile/recorderfile.h"
#include "support/device.h"
#include "support/files.h"
#include "verify/verifier.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

/// One of the forms in which a record is written: lines of the device's section.
struct Form
{
    const char* name;
    QByteArray lines;
    bool cff;
    bool binary;
    bool hasReport;
};

/// All forms: revision, separate files or CFF, ASCII or binary, code page.
const std::vector<Form>& AllForms();

/// A recording of two segments with three analog and three state channels, five samples each.
std::vector<recorderfile::Recording> SmallRecording();

/// A recording of one file with four channels and two states that are long enough for parts of a hundred.
std::vector<recorderfile::Recording> LongRecording();

/// A section of a recording as a channel of its kind.
template <class Channel>
Channel& ChannelOf(recorderfile::Recording& recording, size_t section)
{
    return std::get<Channel>(recording.sections[section]);
}

using Segments = std::vector<recorderfile::Recording>;

class Scene
{
public:
    /// Converts the segments with a device that has these lines.
    Scene(const QByteArray& deviceLines, const std::vector<recorderfile::Recording>& segments);

    /// What the verification says about the record: empty if it is right.
    QString Verdict() const;

    /// The verdict after the record's file with this extension got these bytes; the file is put back.
    QString VerdictWith(const QString& extension, const QByteArray& bytes) const;

    /// What the record in directory is for the recording.
    verify::Standing Find(const QString& directory) const;

    /// Directory of the record.
    QString Out() const { return station.Directory().Path(QStringLiteral("out")); }

    QByteArray Bytes(const QString& extension) const { return ReadBytes(Path(extension)); }

    /// Path of the record's file.
    QString Path(const QString& extension) const;

    QString Recording() const { return station.Directory().Path(QStringLiteral("rec.ZU")); }

private:
    TestStation station;
    std::unique_ptr<verify::Verifier> verifier;
};

/// A copy of a record's files, to be damaged.
class Copy
{
public:
    explicit Copy(const Scene& scene);

    QString Path(const QString& extension) const
    {
        return directory.Path(base + QLatin1Char('.') + extension);
    }
    QByteArray Bytes(const QString& extension) const { return ReadBytes(Path(extension)); }
    void Write(const QString& extension, const QByteArray& bytes) const;
    void Remove(const QString& extension) const;
    QString Directory() const { return directory.Path(); }

private:
    TestDirectory directory;
    QString base;
};

/// What the copy is for the recording of the scene.
verify::RecordState StateOf(const Scene& scene, const Copy& copy);

bool IsThisRecordings(verify::RecordState state);
