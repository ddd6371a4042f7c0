// What the exceptions that end the work on a recording mean for it.
#pragma once

#include "text/error.h"
#include "zucmtr/run/batchitem.h"

/// Within a handler: makes the item a failed one by the exception at hand, with its reason, and whose trouble
/// it is. The item's directory must be set. Nothing is thrown.
void FailByCurrent(BatchItem& item);
