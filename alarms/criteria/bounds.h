#pragma once

#include "alarms/criteria/instruction.h"

#include <array>
#include <cstdint>
#include <vector>

namespace quorvane {

// Where a value lies while time goes by; both ends belong to it. One whose ends are the same is known
// exactly.
struct Bounds {
    double low = 0;
    double high = 0;

    bool IsPoint() const { return low == high; }
    bool Holds(double value) const { return low <= value && value <= high; }
};

// What a criterion answers throughout a span of time.
enum class Verdict : std::uint8_t { Never, Sometimes, Always };

// The bounds of each variable over a span of time, in the order of SystemVariable; there are none for Random.
using VariableBounds = std::array<Bounds, 8>;

// A criterion evaluated on bounds in place of values. It never errs: Never and Always hold at each moment at
// which the variables lie within their bounds. Sometimes may be said of either too, where operands hang
// together in a way that bounds do not show.
// Source: R. E. Moore, "Interval Analysis", chapter 2; ends that a library's function worked out are widened.
class CriteriaBounds {
  public:
    // Instructions in the order of evaluation, as EvaluationOrder gives them.
    explicit CriteriaBounds(std::vector<CriteriaInstruction> order);

    Verdict Judge(const VariableBounds& variables);

  private:
    std::vector<CriteriaInstruction> order_;
    std::vector<Bounds> stack_;
};

} // namespace quorvane
