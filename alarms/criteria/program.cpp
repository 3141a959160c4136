#include "alarms/criteria/program.h"

#include <algorithm>
#include <cstddef>

namespace quorvane {
namespace {

// The evaluation works on an array whose last index is this one; the text's first instruction stands there,
// the others below it.
constexpr std::size_t TopIndex = 10000;

std::vector<CriteriaInstruction> ReadInstructions(std::string_view compiled) {
    std::vector<CriteriaInstruction> instructions;
    for (bool more = !compiled.empty(); more;) {
        if (instructions.size() > TopIndex) throw RunTimeError::SubscriptOutOfRange();
        const std::size_t end = compiled.find('~');
        more = end != std::string_view::npos;
        instructions.push_back(ReadInstruction(compiled.substr(0, end)));
        // Operands below the array's end cannot be reached.
        if (instructions.back().operands > TopIndex + 1 - instructions.size())
            throw RunTimeError::SubscriptOutOfRange();
        compiled.remove_prefix(more ? end + 1 : 0);
    }
    return instructions;
}

// How many operands a text that ended early lacks. All of them are the last ones, and each counts as 0.
std::size_t MissingOperands(const std::vector<CriteriaInstruction>& instructions) {
    std::size_t missing = 0;
    std::size_t waiting = 0;
    for (auto at = instructions.rbegin(); at != instructions.rend(); ++at) {
        const std::size_t wanted = at->operands;
        if (wanted > waiting) {
            missing += wanted - waiting;
            waiting = wanted;
        }
        waiting += 1 - wanted;
    }
    return missing;
}

bool Holds(const CriteriaInstruction& comparison, const CriteriaMoment& moment) {
    const double value = moment.Value(comparison.variable);
    return (RelationOf(value, comparison.number) & comparison.relations) != 0;
}

} // namespace

// Puts the steps in a row and keeps account of what each of them leaves on top.
class CriteriaProgram::Builder {
  public:
    explicit Builder(CriteriaProgram& program)
        : program_(program) {}

    void Add(const CriteriaInstruction& instruction) {
        if (instruction.operands == 0) {
            AddOperand(instruction);
        } else if (!Join(instruction)) {
            AddApply(instruction);
        }
        deepest_ = std::max(deepest_, truths_.size());
    }
    std::size_t Deepest() const { return deepest_; }

  private:
    void AddOperand(const CriteriaInstruction& instruction);
    void AddApply(const CriteriaInstruction& instruction);
    bool Join(const CriteriaInstruction& instruction);
    bool EndsWith(StepKind last) const { return !steps_.empty() && steps_.back().kind == last; }

    CriteriaProgram& program_;
    std::vector<Step>& steps_ = program_.steps_;
    std::vector<bool> truths_; // of the values waiting: whether one can only be true or false
    std::size_t deepest_ = 0;
};

void CriteriaProgram::Builder::AddOperand(const CriteriaInstruction& instruction) {
    Step step{StepKind::Constant, instruction};
    if (instruction.operation == Operation::NoNumber) {
        step.instruction.number = NoNumberValue();
    } else if (instruction.operation == Operation::Variable) {
        const bool isRandom = instruction.variable == SystemVariable::Random;
        step.kind = isRandom ? StepKind::RandomNumber : StepKind::Variable;
        program_.readBits_ |= CriteriaMoment::PackedBits(instruction.variable);
        if (isRandom) program_.pure_ = false;
    }
    steps_.push_back(step);
    truths_.push_back(false);
}

void CriteriaProgram::Builder::AddApply(const CriteriaInstruction& instruction) {
    const Operation operation = instruction.operation;
    if (operation == Operation::Store || operation == Operation::Recall) program_.pure_ = false;
    steps_.push_back({StepKind::Apply, instruction});
    truths_.resize(truths_.size() - instruction.operands);
    truths_.push_back(operation == Operation::Compare);
}

// Joins an instruction to the steps before it. The step before is the left operand, what it found waiting is
// the right one.
bool CriteriaProgram::Builder::Join(const CriteriaInstruction& instruction) {
    const bool joinsTruths =
        instruction.operation == Operation::BitAnd || instruction.operation == Operation::BitOr;
    if (joinsTruths && EndsWith(StepKind::CompareVariable) && truths_[truths_.size() - 2]) {
        steps_.back().kind = instruction.operation == Operation::BitAnd ? StepKind::AndCompareVariable
                                                                        : StepKind::OrCompareVariable;
        truths_.pop_back();
        return true;
    }
    if (instruction.operation == Operation::Compare && EndsWith(StepKind::Variable) &&
        steps_[steps_.size() - 2].kind == StepKind::Constant &&
        steps_[steps_.size() - 2].instruction.operation == Operation::Constant) {
        Step& constant = steps_[steps_.size() - 2];
        constant.kind = StepKind::CompareVariable;
        constant.instruction.variable = steps_.back().instruction.variable;
        constant.instruction.relations = instruction.relations;
        steps_.pop_back();
        truths_.pop_back();
        truths_.back() = true;
        return true;
    }
    return false;
}

std::vector<CriteriaInstruction> EvaluationOrder(std::string_view compiled) {
    std::vector<CriteriaInstruction> order;
    PassOver([&] {
        const std::vector<CriteriaInstruction> instructions = ReadInstructions(compiled);
        order.resize(MissingOperands(instructions));
        order.insert(order.end(), instructions.rbegin(), instructions.rend());
    });
    return order;
}

CriteriaProgram::CriteriaProgram(std::string_view compiled)
    : CriteriaProgram(EvaluationOrder(compiled)) {}

CriteriaProgram::CriteriaProgram(const std::vector<CriteriaInstruction>& order) {
    const bool readable = PassOver([&] {
        Builder builder(*this);
        for (const CriteriaInstruction& instruction : order)
            builder.Add(instruction);
        values_.resize(builder.Deepest());
    });
    if (!readable) steps_.clear();
}

bool CriteriaProgram::Evaluate(const CriteriaMoment& moment, CriteriaMemory& memory) {
    if (steps_.empty()) return false;
    MemoryCursor cursor{memory};
    double value = 0;                 // the topmost one
    double* waiting = values_.data(); // behind those below it
    for (const Step& step : steps_) {
        const CriteriaInstruction& instruction = step.instruction;
        switch (step.kind) {
        case StepKind::Constant:
            *waiting++ = value;
            value = instruction.number;
            break;
        case StepKind::Variable:
            *waiting++ = value;
            value = moment.Value(instruction.variable);
            break;
        case StepKind::RandomNumber:
            *waiting++ = value;
            value = moment.NextRandom();
            break;
        case StepKind::CompareVariable:
            *waiting++ = value;
            value = Holds(instruction, moment) ? TrueValue : FalseValue;
            break;
        case StepKind::AndCompareVariable:
            if (!Holds(instruction, moment)) value = FalseValue;
            break;
        case StepKind::OrCompareVariable:
            if (Holds(instruction, moment)) value = TrueValue;
            break;
        case StepKind::Apply: {
            const double right = instruction.operands == 2 ? *--waiting : 0;
            double result = 0;
            if (ApplyInstruction(instruction, value, right, cursor, result) != CriteriaFailure::None)
                return false;
            value = result;
            break;
        }
        }
    }
    return value < 0 || value > 0; // what is no number is not true
}

bool TestCriteria(std::string_view compiled, const CriteriaMoment& moment, CriteriaMemory& memory) {
    return CriteriaProgram(compiled).Evaluate(moment, memory);
}

bool WatchedCriterion::Test(std::string_view compiled, const CriteriaMoment& moment, CriteriaMemory& memory) {
    if (compiled != compiled_) {
        program_ = CriteriaProgram(compiled);
        compiled_ = compiled;
        answered_ = false;
    }
    const bool unchanged = ((moment.Packed() ^ packed_) & program_.ReadBits()) == 0;
    if (answered_ && unchanged && program_.IsPure()) return answer_;
    answer_ = program_.Evaluate(moment, memory);
    packed_ = moment.Packed();
    answered_ = true;
    return answer_;
}

} // namespace quorvane
