// Sorting dictionaries and recordings for tests of the re-sorter.
#pragma once

#include "recording/zufileformat.h"
#include "resorter/ResorterZuCmtrConv.h"
#include "service/zucmtrconverter.h"
#include "support/files.h"

/// A re-sorter and its device, loaded from a section [Dev] of the given lines (UTF-8, "key=value"), with a
/// log of its own. The load may fail: see Loaded.
class DictionarySection
{
public:
    explicit DictionarySection(const QByteArray& lines);
    ~DictionarySection();
    DictionarySection(const DictionarySection&) = delete;
    DictionarySection& operator=(const DictionarySection&) = delete;

    /// Lines that the load wrote to the log.
    QStringList Log() const;

    /// The device's message queue.
    QStringList Queue() const;

    ZuCmtrDevParam Device;
    ResorterZuCmtrConv Resorter;
    bool Loaded = false;

private:
    TestDirectory directory;
};

/// The same, loaded and pre-sorted; a failure ends the test program.
class SortedDictionary : public DictionarySection
{
public:
    explicit SortedDictionary(const QByteArray& lines);

    /// FullNames of the sorted entries, in dictionary order.
    QStringList AnNames() const;
    QStringList DiNames() const;
};

/// Ini lines A01, A02, ... (or D01, ...) of these values, with their maximum.
QByteArray Entries(const char* letter, const std::vector<QByteArray>& values);

/// A recording that has the names of its channels and nothing else.
class NamedChannels
{
public:
    NamedChannels(const QStringList& analog, const QStringList& discrete);
    ~NamedChannels();
    NamedChannels(const NamedChannels&) = delete;
    NamedChannels& operator=(const NamedChannels&) = delete;

    ZuFileFormat File;
};
