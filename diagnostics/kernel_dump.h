#pragma once

#include "config/global_record.h"

#include <functional>
#include <string>
#include <string_view>

namespace quorvane {

class Files;

// Why the state was written down.
struct ErrorReport {
    std::string code; // "Error code: 5"
    std::string message;
    std::string moment; // as the person's system writes date and time
};

// The state of the program as text: a header of asterisks, then a line a field of the record, its label and
// its value, and a line an entry of each list, each line ended by CR LF. `write` is given it bit by bit.
// Texts stand as they are; numbers and booleans have no blanks around them.
void WriteKernelDump(const GlobalRecord& record, const ErrorReport& report,
                     const std::function<void(std::string_view)>& write);

// The same into a file, in place of what it held. Empty on success, or why it was not written, in words for a
// person.
std::string SaveKernelDump(const GlobalRecord& record, const ErrorReport& report, Files& files,
                           const std::string& path);

} // namespace quorvane
