// The journal of 'zucmtr watch' as earlier versions kept it: a file of lines, which is taken over once.
#pragma once

#include "zucmtr/watch/watchjournal.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace textjournal {

/// Whether a file with these bytes at its beginning is one, be it cut off in its first line.
bool Is(const QByteArray& begin);

/// Gives each line in order; one that was cut off counts as none.
using Take = std::function<void(const QString& recording, const WatchJournal::Entry& entry)>;
void Read(const QByteArray& bytes, const Take& take);

} // namespace textjournal
