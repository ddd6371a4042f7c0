// What the exceptions that end the work on a recording mean for it.
#pragma once

#include "zucmtr/run/batchitem.h"

/// Within a handler: marks the item as failed by the exception that is being caught, with its reason, and
/// with what has to be put right. The item's directory must be set. Nothing is thrown.
void FailByCurrent(BatchItem& item);
