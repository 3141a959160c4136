#include "alarms/criteria/bounds.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <utility>

namespace quorvane {
namespace {

constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr Bounds Anything{-Infinite, Infinite};
constexpr Bounds AnyTruth{TrueValue, FalseValue};
constexpr Bounds AnyInteger{std::numeric_limits<std::int32_t>::min(),
                            std::numeric_limits<std::int32_t>::max()};

// One evaluation: what has been stored so far and whether it can have failed by now.
struct Course {
    CriteriaMemory memory;
    MemoryCursor cursor{memory};
    bool mayFail = false;
    bool fails = false;

    Bounds Unknown() {
        mayFail = true;
        return Anything;
    }
    Bounds Failed() {
        fails = true;
        return Anything;
    }
};

// The least and the greatest of what the operation gives for pairs of ends: its bounds, where it grows or
// falls in each operand throughout.
Bounds FromEnds(const CriteriaInstruction& instruction, const Bounds& left, const Bounds& right,
                Course& course) {
    Bounds bounds{Infinite, -Infinite};
    for (const double l : {left.low, left.high}) {
        for (const double r : {right.low, right.high}) {
            double result = 0;
            if (ApplyInstruction(instruction, l, r, course.cursor, result) != CriteriaFailure::None)
                return course.Unknown();
            bounds = {std::min(bounds.low, result), std::max(bounds.high, result)};
        }
    }
    return bounds;
}

Bounds Widened(const Bounds& bounds) {
    constexpr double Error = 1e-12; // relative; the functions of a mathematical library err by a few 1e-16
    return {bounds.low - std::fabs(bounds.low) * Error, bounds.high + std::fabs(bounds.high) * Error};
}

Bounds CompareBounds(Relations wanted, const Bounds& left, const Bounds& right) {
    Relations possible = 0;
    if (left.low < right.high) possible |= Less;
    if (left.high > right.low) possible |= Greater;
    if (left.low <= right.high && right.low <= left.high) possible |= Equal;
    if ((possible & wanted) == 0) return {FalseValue, FalseValue};
    return (possible & ~wanted) == 0 ? Bounds{TrueValue, TrueValue} : AnyTruth;
}

// As the bitwise operators round their operands. What lies beyond 32 bits fails.
Bounds Rounded(const Bounds& bounds, Course& course) {
    const Bounds rounded{std::nearbyint(bounds.low), std::nearbyint(bounds.high)};
    if (rounded.low > AnyInteger.high || rounded.high < AnyInteger.low) return course.Failed();
    if (rounded.low < AnyInteger.low || rounded.high > AnyInteger.high) course.mayFail = true;
    return {std::max(rounded.low, AnyInteger.low), std::min(rounded.high, AnyInteger.high)};
}

bool IsTruth(const Bounds& bounds) {
    return bounds.low >= TrueValue && bounds.high <= FalseValue;
}

// The greatest number that needs no more bits than `value` does.
double AllBitsOf(double value) {
    return value < 1 ? 0 : std::exp2(std::floor(std::log2(value)) + 1) - 1;
}

Bounds AndBounds(const Bounds& left, const Bounds& right) {
    if (IsTruth(left) && IsTruth(right))
        return {std::max(left.low, right.low), std::max(left.high, right.high)};
    if (left.low >= 0 && right.low >= 0) return {0, std::min(left.high, right.high)};
    if (left.low >= 0) return {0, left.high};
    if (right.low >= 0) return {0, right.high};
    return AnyInteger;
}

Bounds OrBounds(const Bounds& left, const Bounds& right) {
    if (IsTruth(left) && IsTruth(right))
        return {std::min(left.low, right.low), std::min(left.high, right.high)};
    if (left.low >= 0 && right.low >= 0)
        return {std::max(left.low, right.low), AllBitsOf(std::max(left.high, right.high))};
    return AnyInteger;
}

Bounds ModuloBounds(const Bounds& left, const Bounds& right, Course& course) {
    if (right.low == 0 && right.high == 0) return course.Failed();
    if (right.Holds(0)) course.mayFail = true;
    const double divisor = std::fabs(right.low);
    if (right.IsPoint() && left.low >= 0 && std::floor(left.low / divisor) == std::floor(left.high / divisor))
        return {std::fmod(left.low, divisor), std::fmod(left.high, divisor)};
    const double most = std::max(divisor, std::fabs(right.high)) - 1;
    return {left.low >= 0 ? 0 : -most, left.high <= 0 ? 0 : most};
}

Bounds ApplyToIntegers(const CriteriaInstruction& instruction, const Bounds& left, const Bounds& right,
                       Course& course) {
    const Bounds l = Rounded(left, course);
    const Bounds r = Rounded(right, course);
    if (course.fails) return Anything;
    if (instruction.operation == Operation::BitAnd) return AndBounds(l, r);
    return instruction.operation == Operation::BitOr ? OrBounds(l, r) : ModuloBounds(l, r, course);
}

Bounds FractionBounds(const Bounds& left) {
    const double whole = std::floor(left.low);
    return whole == std::floor(left.high) ? Bounds{left.low - whole, left.high - whole} : Bounds{0, 1};
}

// `fst` gives what it stores; a second one in an evaluation fails.
Bounds StoreBounds(const Bounds& left, Course& course) {
    if (course.cursor.index < 0) return course.Failed();
    --course.cursor.index;
    return left;
}

// Where the ends come nearest to 0 and farthest from it.
Bounds DistanceBounds(const Bounds& left) {
    const auto [near, far] = std::minmax({std::fabs(left.low), std::fabs(left.high)});
    return {left.Holds(0) ? 0 : near, far};
}

Bounds ApplyFunction(const CriteriaInstruction& instruction, const Bounds& left, Course& course) {
    switch (instruction.operation) {
    case Operation::Sine:
    case Operation::Cosine:
    case Operation::Tangent: // of no angle at all, whatever the operand
        return FromEnds(instruction, {0, 0}, {0, 0}, course);
    case Operation::Cotangent:
    case Operation::ArcTangent:
    case Operation::ArcCotangent:
    case Operation::ArcCosine:
    case Operation::ArcSine:
        return course.Failed();
    case Operation::NaturalLogarithm:
    case Operation::DecimalLogarithm:
    case Operation::SquareRoot:
    case Operation::CubeRoot:
    case Operation::Exponential:
    case Operation::PowerOfTen:
        return Widened(FromEnds(instruction, left, {0, 0}, course));
    case Operation::Square:
        return FromEnds(instruction, DistanceBounds(left), {0, 0}, course);
    case Operation::Reciprocal:
        return left.Holds(0) ? course.Unknown() : FromEnds(instruction, left, {0, 0}, course);
    default:
        return course.Unknown(); // no number, or what was stored by another evaluation
    }
}

Bounds ApplyToBounds(const CriteriaInstruction& instruction, const Bounds& left, const Bounds& right,
                     Course& course) {
    switch (instruction.operation) {
    case Operation::Add:
    case Operation::Subtract:
    case Operation::Multiply:
        return FromEnds(instruction, left, right, course);
    case Operation::Divide:
        return right.Holds(0) ? course.Unknown() : FromEnds(instruction, left, right, course);
    case Operation::BitOr:
    case Operation::BitAnd:
    case Operation::Modulo:
        return ApplyToIntegers(instruction, left, right, course);
    case Operation::Compare:
        return CompareBounds(instruction.relations, left, right);
    case Operation::Negate:
        return {-left.high, -left.low};
    case Operation::Integer:
        return {std::floor(left.low), std::floor(left.high)};
    case Operation::Absolute:
        return DistanceBounds(left);
    case Operation::Fraction:
        return FractionBounds(left);
    case Operation::Store:
        return StoreBounds(left, course);
    default:
        return ApplyFunction(instruction, left, course);
    }
}

Bounds ApplyExactly(const CriteriaInstruction& instruction, double left, double right, Course& course) {
    double result = 0;
    if (ApplyInstruction(instruction, left, right, course.cursor, result) != CriteriaFailure::None)
        return course.Failed();
    return std::isnan(result) ? course.Unknown() : Bounds{result, result};
}

Bounds Apply(const CriteriaInstruction& instruction, const Bounds& left, const Bounds& right,
             Course& course) {
    const bool exact = left.IsPoint() && (instruction.operands < 2 || right.IsPoint());
    if (exact && instruction.operation != Operation::Recall)
        return ApplyExactly(instruction, left.low, right.low, course);
    return ApplyToBounds(instruction, left, right, course);
}

Bounds OperandBounds(const CriteriaInstruction& instruction, const VariableBounds& variables,
                     Course& course) {
    if (instruction.operation == Operation::Constant) return {instruction.number, instruction.number};
    const bool known =
        instruction.operation == Operation::Variable && instruction.variable != SystemVariable::Random;
    return known ? variables[static_cast<std::size_t>(instruction.variable)] : course.Unknown();
}

} // namespace

CriteriaBounds::CriteriaBounds(std::vector<CriteriaInstruction> order)
    : order_(std::move(order)) {}

Verdict CriteriaBounds::Judge(const VariableBounds& variables) {
    Course course;
    stack_.clear();
    const auto pop = [this] {
        const Bounds top = stack_.back();
        stack_.pop_back();
        return top;
    };
    for (const CriteriaInstruction& instruction : order_) {
        if (instruction.operands == 0) {
            stack_.push_back(OperandBounds(instruction, variables, course));
            continue;
        }
        const Bounds left = pop();
        const Bounds right = instruction.operands == 2 ? pop() : Bounds{};
        stack_.push_back(Apply(instruction, left, right, course));
        if (course.fails) return Verdict::Never;
    }
    if (stack_.empty() || (stack_.back().IsPoint() && stack_.back().low == 0)) return Verdict::Never;
    return course.mayFail || stack_.back().Holds(0) ? Verdict::Sometimes : Verdict::Always;
}

} // namespace quorvane
