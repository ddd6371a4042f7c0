// A recorder file made from bytes or a recording and loaded, for tests.
#pragma once

#include "recorderfile/recorderfile.h"
#include "recording/zufileformat.h"
#include "support/files.h"

/// One loaded recorder file, or one that failed to load; released with the object.
class LoadedFile
{
public:
    explicit LoadedFile(const QByteArray& bytes)
        : loaded(file.Load(directory.Write(QStringLiteral("rec.ZU"), bytes)))
    {}
    explicit LoadedFile(const recorderfile::Recording& recording)
        : LoadedFile(recorderfile::Encode(recording))
    {}

    /// What Load returned.
    bool Ok() const { return loaded; }

    ZuFileFormat* operator->() { return &file; }
    ZuFileFormat& File() { return file; }
    AnChannelData& An(size_t index = 0) { return *file.AnChannels.at(index); }
    DiChannelData& Di(size_t index = 0) { return *file.DiChannels.at(index); }

private:
    TestDirectory directory;
    ZuFileFormat file;
    bool loaded;
};

/// The codes of a loaded analog channel.
inline std::vector<int16_t> CodesOf(const AnChannelData& channel)
{
    const uint32_t points = channel.m_HeaderAn.points;
    return {channel.Samples, channel.Samples + points};
}
