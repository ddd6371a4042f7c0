// Work on one recording in a process of its own, so that it does not take the program with it.
#pragma once

#include "zucmtr/run/batchitem.h"

#include <functional>

/// Does the work in a copy of the program as it is now, and waits for it. If that comes down, the item is a
/// failed one: neverEnded, or processKilled if somebody or the system has ended it. `prepare` is called in
/// the copy first, to let go of what it should not hold. The copy ends with the program, however that ends.
/// Not for a program that runs threads.
BatchItem WorkInOwnProcess(const std::function<BatchItem()>& work, const std::function<void()>& prepare);
