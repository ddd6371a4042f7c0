// The process that watches over a command: see RecordCommand.
#pragma once

#include "zucmtr/watch/recordcommand.h"

/// Runs the command and writes its Outcome to the channel as a JSON object, in one message. If the other end
/// of the channel is closed first, the command is ended. To be called in a process made for it, which this
/// ends.
[[noreturn]] void MindCommand(const RecordCommand::Order& order, int channel);
