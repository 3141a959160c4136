#include "alarms/criteria/trial.h"

#include "alarms/criteria/compiler.h"
#include "core/numbers.h"
#include "core/text.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace quorvane {
namespace {

// The evaluation as it is told to a person: the same steps as CriteriaProgram takes, with the instructions'
// texts at hand.
class Trial {
  public:
    Trial(const CriteriaMoment& moment, CriteriaMemory& memory)
        : moment_(moment)
        , cursor_{memory} {}

    std::string Run(const std::string& compiled) {
        const std::vector<std::string> texts =
            compiled.empty() ? std::vector<std::string>() : Split(compiled, '~');
        for (auto at = texts.rbegin(); at != texts.rend(); ++at) {
            const CriteriaFailure failure = Take(*at);
            if (failure != CriteriaFailure::None) return FailureText(*at, ErrorOf(failure));
        }
        return ResultText(texts.size());
    }

  private:
    CriteriaFailure Take(const std::string& text) {
        const CriteriaInstruction instruction = ReadInstruction(text);
        if (instruction.operands == 0) {
            values_.push_back(ValueOf(instruction));
            return CriteriaFailure::None;
        }
        double result = 0;
        const CriteriaFailure failure =
            ApplyInstruction(instruction, ValueBelow(0), ValueBelow(1), cursor_, result);
        if (failure != CriteriaFailure::None) return failure;
        consumed_ += instruction.operands;
        values_.resize(values_.size() - std::min<std::size_t>(values_.size(), instruction.operands));
        values_.push_back(result);
        return CriteriaFailure::None;
    }

    double ValueOf(const CriteriaInstruction& instruction) const {
        if (instruction.operation != Operation::Variable) return instruction.number;
        return instruction.variable == SystemVariable::Random ? moment_.NextRandom()
                                                              : moment_.Value(instruction.variable);
    }

    // The value so many places below the topmost one. What an early end of the text left out counts as 0, and
    // is nothing when it is printed.
    double ValueBelow(std::size_t depth) const {
        return depth < values_.size() ? values_[values_.size() - 1 - depth] : 0;
    }
    std::string TextBelow(std::size_t depth) const {
        return depth < values_.size() ? NumberText(ValueBelow(depth)) : std::string();
    }

    // An operator shortens the list by all its operands, also by those that an early end of the text left
    // out; then nothing of the list is left to be shown.
    std::string ResultText(std::size_t instructions) const {
        std::string text = "Result: ";
        for (std::size_t depth = 0; depth + consumed_ < instructions; ++depth)
            text += TextBelow(depth) + " ";
        return text;
    }
    std::string FailureText(const std::string& instruction, const RunTimeError& error) const {
        static const std::string frame = "\r\n**************";
        return frame + "\r\n" + error.Description() + " (" + std::to_string(error.Number()) +
               ")\r\nWhile computing: " + TextBelow(0) + std::string(OperandOf(instruction)) + TextBelow(1) +
               frame;
    }

    const CriteriaMoment& moment_;
    MemoryCursor cursor_;
    std::vector<double> values_; // the topmost last
    std::size_t consumed_ = 0;   // operands taken so far
};

} // namespace

CriteriaTrial TryCriteria(std::string_view text, const CriteriaMoment& moment, CriteriaMemory& memory) {
    const CompiledCriterion compiled = CompileCriteria(text);
    if (compiled.inBox) return {{}, compiled.message};
    if (compiled.refused) return {compiled.message, {}};
    return {compiled.compiled + Trial(moment, memory).Run(compiled.compiled), {}};
}

} // namespace quorvane
