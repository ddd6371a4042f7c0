// Ini sections with device keys for tests, each loaded from its own file with its own log.
#pragma once

#include "base/log.h"
#include "config/QSettingsRu.h"
#include "device/zucmtrdevparam.h"
#include "support/files.h"

#include <vector>

/// The key and value lines of a section, in order.
class SectionText
{
public:
    SectionText() = default;

    /// All nineteen keys, every value different from the built-in one and every switch on.
    static SectionText Whole();

    /// All nineteen keys with other values, every switch off.
    static SectionText Other();

    /// Adds the key, or changes its value in place.
    SectionText& Set(const QString& key, const QString& value);

    /// Removes the key.
    SectionText& Drop(const QString& key);

    QByteArray Bytes() const;

private:
    std::vector<std::pair<QString, QString>> lines;
};

/// Loads sections [S] into parameters and devices, and keeps what the last load wrote to the log.
class SectionLoader
{
public:
    SectionLoader() = default;
    ~SectionLoader();
    SectionLoader(const SectionLoader&) = delete;
    SectionLoader& operator=(const SectionLoader&) = delete;

    bool LoadParam(ZuCmtrDevParamDefault& param, const SectionText& section, bool useDefaults);
    bool LoadDevice(ZuCmtrDevParam& device, const SectionText& section);

    /// Lines that the last load wrote to the log.
    QStringList Log() const;

    /// The last load's line about this key; null if there is none.
    QString LogLine(const QString& key) const;

private:
    QString Prepare(const SectionText& section);

    TestDirectory directory;
    int loads = 0;
};
