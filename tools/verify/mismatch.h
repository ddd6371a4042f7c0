// What a verification finds.
#pragma once

#include "text/error.h"

#include <QString>

namespace verify {

/// A record that is not what its recording makes it; the message names the file, the place in it,
/// what stands there and what should.
class Mismatch : public text::Error
{
public:
    using text::Error::Error;
};

/// A recording or a device that cannot be read, so that there is nothing to compare with.
class Unreadable : public text::Error
{
public:
    using text::Error::Error;
};

/// Throws the Mismatch of two values at one place ("'a.cfg', analog channel 3, unit").
[[noreturn]] void Differ(const QString& place, const QString& found, const QString& expected);

/// Throws that Mismatch unless the values are the same.
void ExpectSame(const QString& place, const QString& found, const QString& expected);
void ExpectSame(const QString& place, qint64 found, qint64 expected);

} // namespace verify
