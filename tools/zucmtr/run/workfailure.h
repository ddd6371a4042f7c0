// What the exceptions that end the work on a recording mean for it.
#pragma once

#include "zucmtr/run/batchitem.h"

#include <QString>

#include <exception>

/// What to do when memory runs out.
QString MemoryText();

/// The text of an exception that ended the work on a recording.
QString TextOf(const std::exception& error);

/// Within a handler: makes the item a failed one by the exception at hand, with its reason, and whose trouble
/// it is. The item's directory must be set. Nothing is thrown.
void FailByCurrent(BatchItem& item);
