#pragma once

#include "cli/command.h"
#include "commands/record_command.h"

namespace quorvane::cli {

// A verb of commands/ as a command of quorvanectl. It is carried out by a running program where there is one,
// on its live record, and on the stored tree otherwise or with "--stored"; "--pid" chooses among several
// copies. With "--settings" or "--set" it works on a tree in memory.
Command FromRecordCommand(const commands::RecordCommand& command);

} // namespace quorvane::cli
