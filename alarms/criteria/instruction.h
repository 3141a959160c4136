#pragma once

#include "alarms/criteria/words.h"
#include "core/run_time_error.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace quorvane {

// The entries that the functions "fst" and "frst" use. They outlive an evaluation; their owner keeps them.
struct CriteriaMemory {
    std::array<double, 17> entries{};
};

// The memory as one evaluation sees it: the index begins at 0 each time.
struct MemoryCursor {
    CriteriaMemory& memory;
    int index = 0;
};

// Why an evaluation stopped. A code and no exception, since a failing criterion fails twice a second.
enum class CriteriaFailure : std::uint8_t {
    None,
    InvalidCall,
    Overflow,
    SubscriptOutOfRange,
    DivisionByZero,
    TypeMismatch,
};

// The failure's number and description; not for None.
RunTimeError ErrorOf(CriteriaFailure failure);

struct CriteriaInstruction {
    Operation operation = Operation::Constant;
    std::uint8_t operands = 0; // how many it takes
    SystemVariable variable = SystemVariable::Year;
    Relations relations = 0;
    double number = 0;
};

// The text of an instruction behind its digit and ";".
std::string_view OperandOf(std::string_view instruction);

// One instruction of a compiled text: a digit, any character, an operand. Throws Overflow for a constant that
// is too great.
CriteriaInstruction ReadInstruction(std::string_view text);

// An operand that is no number, as an unknown variable gives.
double NoNumberValue();

// Applies an operation with operands. `right` counts only where there are two. `result` is set on success.
CriteriaFailure ApplyInstruction(const CriteriaInstruction& instruction, double left, double right,
                                 MemoryCursor& cursor, double& result);

inline Relations RelationOf(double left, double right) {
    return left < right ? Less : left > right ? Greater : Equal;
}

// What a comparison yields.
inline constexpr double TrueValue = -1;
inline constexpr double FalseValue = 0;

} // namespace quorvane
