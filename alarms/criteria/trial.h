#pragma once

#include "alarms/criteria/instruction.h"
#include "alarms/criteria/moment.h"

#include <string>
#include <string_view>

namespace quorvane {

struct CriteriaTrial {
    // What stands in the editor's message box afterwards: what is wrong with the text, or the compiled
    // criterion with its value at the moment, or with the run-time error that it met.
    std::string output;
    // For a message box of the critical kind titled "ERROR!"; mostly empty.
    std::string boxMessage;
};

// Compiles a criterion as typed and evaluates it once, as the editor's "Compile criteria" button does.
CriteriaTrial TryCriteria(std::string_view text, const CriteriaMoment& moment, CriteriaMemory& memory);

} // namespace quorvane
