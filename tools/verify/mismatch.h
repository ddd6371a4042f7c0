// What a verification finds.
#pragma once

#include <QString>

#include <stdexcept>

namespace verify {

/// A record that is not what its recording makes it; what() is UTF-8 and names the file, the place in it,
/// what stands there and what should.
class Mismatch : public std::runtime_error
{
public:
    explicit Mismatch(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// A recording or a device that cannot be read, so that there is nothing to compare with; what() is UTF-8.
class Unreadable : public std::runtime_error
{
public:
    explicit Unreadable(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// Throws the Mismatch of two values at one place ("'a.cfg', analog channel 3, unit").
[[noreturn]] void Differ(const QString& place, const QString& found, const QString& expected);

/// Throws that Mismatch unless the values are the same.
void ExpectSame(const QString& place, const QString& found, const QString& expected);
void ExpectSame(const QString& place, qint64 found, qint64 expected);

} // namespace verify
