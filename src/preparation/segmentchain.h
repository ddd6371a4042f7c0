// The segments of one recording, from their files to the point at which the writers take them.
#pragma once

#include <QString>

#include <vector>

class ZuCmtrDevParam;
class ZuFileFormat;

/// Owns the loaded files of a recording and releases them however its scope is left, exceptions included.
/// Failures go to the device's LastError, notes on a shortened chain to its queue.
class SegmentChain
{
public:
    explicit SegmentChain(ZuCmtrDevParam& device_);
    ~SegmentChain();
    SegmentChain(const SegmentChain&) = delete;
    SegmentChain& operator=(const SegmentChain&) = delete;

    /// Loads the first file and the continuation files beside it. A continuation that cannot be loaded ends
    /// the chain with a note; a first file that cannot be loaded is a failure.
    bool Load(const QString& fileName);

    /// Drops the files from the first one on that does not continue the recording, with a note.
    void CutAtDifference();

    /// Whether, in each file, all analog channels have the same rate and the same number of points.
    bool CheckChannels();

    /// Fills the device's SampleRate, TotalTime and TotalSamples, and the time base of every file. False for
    /// a rate or a length of 0, and for files of different rates.
    bool SumTotals();

    /// The three steps above, which make a loaded chain one recording. False if it is none.
    bool Check();

    /// Gives the first segment its COMTRADE names, start comment, channel order and output name, as the
    /// device's parameters and dictionary have it. Throws std::out_of_range as ZuFileFormat::ParseComment
    /// does.
    void Prepare();

    /// Deletes the recorder files of the chain.
    void RemoveSources() const;

    ZuFileFormat& First() const { return *files.front(); }

    /// The files in order, the first one at index 0.
    std::vector<ZuFileFormat*>* Files() { return &files; }

    /// The paths of the files in the same order.
    const std::vector<QString>& Paths() const { return paths; }

private:
    bool LoadContinuation(const QString& name, const QString& fileName);
    bool Fail(const QString& text);

    ZuCmtrDevParam& device;
    std::vector<ZuFileFormat*> files;
    std::vector<QString> paths;
};
