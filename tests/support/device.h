// Devices for tests, made the way a host makes them: from an ini file.
#pragma once

#include "service/zucmtrconverter.h"
#include "support/files.h"

/// Ini text of a default section [Defaults] with every key; identity texts as built in, 2013, ASCII, CP1251.
QByteArray DefaultsSection();

/// A converter with its defaults and one device, number 0, whose section [Device] has the given lines (UTF-8,
/// "key=value"): device keys, nAnMax, A01, BAY01 and so on. Also a directory for files. If loading fails, the
/// test program ends.
class TestStation
{
public:
    explicit TestStation(const QByteArray& deviceLines = QByteArray());
    ~TestStation();
    TestStation(const TestStation&) = delete;
    TestStation& operator=(const TestStation&) = delete;

    ZuCmtrConverter& Converter() { return converter; }
    ZuCmtrDevParam& Device() { return *converter.m_DevParams.at(0); }
    const TestDirectory& Directory() const { return directory; }

    /// Writes the recorder file and converts it into the subdirectory out. Returns the result.
    bool Convert(const QByteArray& recorderFile, const QString& name = QStringLiteral("rec.ZU"));

    /// The bytes of the one output file with this extension ("cfg", "dat", ...); the test program ends if
    /// there is not exactly one.
    QByteArray Output(const QString& extension) const;

private:
    TestDirectory directory;
    ZuCmtrConverter converter;
};
