#pragma once

#include "alarms/criteria/instruction.h"
#include "alarms/criteria/moment.h"
#include "alarms/criteria/program.h"
#include "core/text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The evaluation on its two arrays, pass after pass and with every entry moved: the measure for the decoded
// program.
namespace quorvane::reference {

class Arrays {
  public:
    // A short text may be tried on shorter arrays, which are faster to move.
    explicit Arrays(int top = 10000)
        : top_(top)
        , values_(static_cast<std::size_t>(top) + 1)
        , instructions_(static_cast<std::size_t>(top) + 1)
        , low_(top + 1) {}

    // Throws RunTimeError where the evaluation fails.
    bool Evaluate(std::string_view compiled, const CriteriaMoment& moment, CriteriaMemory& memory) {
        MemoryCursor cursor{memory};
        Load(compiled, moment);
        bool reduced = true;
        while (reduced) {
            reduced = false;
            for (int i = low_; i <= top_; ++i) {
                const CriteriaInstruction instruction = instructions_[Place(i)];
                if (instruction.operands == 0) continue;
                reduced = true;
                Reduce(i, instruction, cursor);
            }
        }
        const double result = values_[Place(top_)].value_or(0);
        if (result != result) throw RunTimeError::TypeMismatch();
        return result != 0;
    }

  private:
    std::size_t Place(int index) const {
        if (index < 0 || index > top_) throw RunTimeError::SubscriptOutOfRange();
        return static_cast<std::size_t>(index);
    }

    void Load(std::string_view compiled, const CriteriaMoment& moment) {
        if (compiled.empty()) return;
        int n = 0;
        for (const std::string& text : Split(compiled, '~')) {
            const std::size_t place = Place(top_ - n++);
            instructions_[place] = ReadInstruction(text);
            const CriteriaInstruction& instruction = instructions_[place];
            if (instruction.operation == Operation::NoNumber) values_[place] = NoNumberValue();
            if (instruction.operation == Operation::Constant) values_[place] = instruction.number;
            if (instruction.operation == Operation::Variable) {
                values_[place] = instruction.variable == SystemVariable::Random
                                     ? moment.NextRandom()
                                     : moment.Value(instruction.variable);
            }
        }
        low_ = top_ - (n - 1);
    }

    void Reduce(int i, const CriteriaInstruction& instruction, MemoryCursor& cursor) {
        const int operands = instruction.operands;
        const double left = values_[Place(i - 1)].value_or(0);
        const double right = operands == 2 ? values_[Place(i - 2)].value_or(0) : 0;
        double result = 0;
        const CriteriaFailure failure = ApplyInstruction(instruction, left, right, cursor, result);
        if (failure != CriteriaFailure::None) throw ErrorOf(failure);
        values_[Place(i)] = result;
        instructions_[Place(i)] = {};
        for (int to = i - 1; to >= 0; --to) {
            const bool inside = to - operands >= 0;
            values_[Place(to)] = inside ? values_[Place(to - operands)] : std::nullopt;
            instructions_[Place(to)] = inside ? instructions_[Place(to - operands)] : CriteriaInstruction{};
        }
        low_ += operands;
    }

    int top_;
    std::vector<std::optional<double>> values_;
    std::vector<CriteriaInstruction> instructions_;
    int low_;
};

inline bool TestCriteria(std::string_view compiled, const CriteriaMoment& moment, CriteriaMemory& memory,
                         int top = 10000) {
    bool result = false;
    PassOver([&] { result = Arrays(top).Evaluate(compiled, moment, memory); });
    return result;
}

// Whether the decoded program answers as the arrays do and leaves the same entries; each way has its memory.
inline bool Agree(std::string_view compiled, const CriteriaMoment& moment, CriteriaMemory& memory,
                  CriteriaMemory& slowMemory, int top = 10000) {
    const bool answer = quorvane::TestCriteria(compiled, moment, memory);
    return answer == TestCriteria(compiled, moment, slowMemory, top) && memory.entries == slowMemory.entries;
}

} // namespace quorvane::reference
