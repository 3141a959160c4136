#pragma once

#include "alarms/criteria/instruction.h"
#include "alarms/criteria/moment.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// The instructions of a compiled text in the order in which they are evaluated, the text's last one first,
// behind a 0 for each operand that a text which ended early lacks. None for a text that can never be
// evaluated.
std::vector<CriteriaInstruction> EvaluationOrder(std::string_view compiled);

// A compiled criterion, decoded. Decoding takes any text at all; one that cannot be evaluated is false at
// every moment.
class CriteriaProgram {
  public:
    CriteriaProgram() = default;
    explicit CriteriaProgram(std::string_view compiled);
    // Of instructions as EvaluationOrder gives them.
    explicit CriteriaProgram(const std::vector<CriteriaInstruction>& order);

    // Whether the criterion holds. Any failure is false. Allocates nothing.
    bool Evaluate(const CriteriaMoment& moment, CriteriaMemory& memory);

    // The bits of CriteriaMoment::Packed that the criterion reads.
    std::uint64_t ReadBits() const { return readBits_; }
    // The answer depends on the bits it reads alone, and evaluating it leaves no trace.
    bool IsPure() const { return pure_; }

  private:
    // An instruction, or several that are often met together and cannot fail.
    enum class StepKind : std::uint8_t {
        Constant,
        Variable,
        RandomNumber,
        CompareVariable,    // a variable with a constant
        AndCompareVariable, // the same, joined to the truth value before it
        OrCompareVariable,
        Apply,
    };
    struct Step {
        StepKind kind;
        CriteriaInstruction instruction;
    };
    class Builder;

    std::vector<Step> steps_;    // in the order of evaluation: the text's last instruction first
    std::vector<double> values_; // room for those that wait below the topmost one
    std::uint64_t readBits_ = 0;
    bool pure_ = true;
};

// Whether a compiled criterion holds at a moment. For a criterion that is tested again and again, keep a
// WatchedCriterion.
bool TestCriteria(std::string_view compiled, const CriteriaMoment& moment, CriteriaMemory& memory);

// An alarm's criterion from one tick to the next. It answers as TestCriteria does, decodes the text only when
// it is another than at the last test, and evaluates it only when something it reads has changed since.
class WatchedCriterion {
  public:
    // Allocates nothing while the text stays the same.
    bool Test(std::string_view compiled, const CriteriaMoment& moment, CriteriaMemory& memory);

  private:
    std::string compiled_;
    CriteriaProgram program_;
    bool answered_ = false; // `answer_` was given at `packed_` by the program as it is
    bool answer_ = false;
    std::uint64_t packed_ = 0;
};

} // namespace quorvane
