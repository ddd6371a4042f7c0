// The journal of 'zucmtr watch' as earlier versions kept it: a text file, which is imported once.
#pragma once

#include "zucmtr/watch/watchjournal.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace textjournal {

/// Whether a file that starts with these bytes is one, even if it is cut off in its first line.
bool Is(const QByteArray& begin);

/// Calls `take` for each line in order; a line that was cut off is ignored.
using Take = std::function<void(const QString& recording, const WatchJournal::Entry& entry)>;
void Read(const QByteArray& bytes, const Take& take);

} // namespace textjournal
