// Work on one recording in a process of its own, so that a crash does not end the program.
#pragma once

#include "zucmtr/run/batchitem.h"

#include <functional>

/// Does the work in a copy of the program as it is now, and waits for it. If the copy crashes, the item is a
/// failed one: neverEnded, or processKilled if somebody or the system has ended it. `prepare` is called in
/// the copy first, to release what it should not hold. The copy ends when the program ends, however that
/// happens. Not for a program that runs threads.
BatchItem WorkInOwnProcess(const std::function<BatchItem()>& work, const std::function<void()>& prepare);
