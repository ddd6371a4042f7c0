// A configuration that cannot be parsed, as a power failure leaves it: zeros stand for what was not written.
#pragma once

#include <QByteArray>
#include <QStringList>

namespace verify {

class Source;

/// Up to the first zero; all of it if there is none.
QByteArray Written(const QByteArray& text);

/// The whole lines that are stamps, in their order, if the text has zeros; without zeros they are no part of
/// a torn configuration but of another text. At most the first two.
QStringList WrittenStamps(const QByteArray& text);

/// Whether it can be what is left of the recording's configuration: its first lines or part of them, or
/// nothing but zeros.
bool MayBeConfiguration(const QByteArray& text, const Source& source);

} // namespace verify
